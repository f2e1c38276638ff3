#include "platform/uikit/Text+Qt.h"

namespace exifcard {

QString beginningOf(const QString& text, qsizetype length) {
    if (text.size() <= length) {
        return text;
    }
    QString beginning = text.left(length);
    if (beginning.back().isHighSurrogate()) {
        beginning.chop(1);
    }
    return beginning + QChar(0x2026);
}

} // namespace exifcard
