#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace exifcard {

/// The text for the toolkit; what is no UTF-8 shows as replacement characters.
inline QString qString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string textFromQString(const QString& text) {
    return text.toStdString();
}

/// The text, or of a longer one so many characters, at least one, and an ellipsis.
QString beginningOf(const QString& text, qsizetype length);

} // namespace exifcard
