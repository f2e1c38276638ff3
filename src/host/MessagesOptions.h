#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace exifcard {

/// What the program was started with.
struct MessagesOptions {
    std::optional<QString> library;      ///< An absolute folder.
    std::optional<QString> conversation; ///< Not empty.
    std::optional<bool> isTablet;        ///< Nothing: the window's width decides.
    std::optional<QString> screen;       ///< As `UIScreen::screenFromText` reads it; valid.
    std::optional<QString> log;          ///< "debug" or "debug=system".
    std::optional<QString> tour;         ///< A folder for pictures of the screens.
};

/// An answer in place of a window.
struct OptionsAnswer {
    QString text; ///< One line for a wrong usage.
    bool isWrongUsage = false;
};

/// Reads the program's arguments, the first of which is its name.
std::variant<MessagesOptions, OptionsAnswer> messagesOptionsFrom(const QStringList& arguments);

} // namespace exifcard
