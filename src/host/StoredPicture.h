#pragma once

#include <QImage>
#include <QPointer>
#include <QSize>

#include <functional>
#include <string>

class QObject;

namespace exifcard {

/// Reads a picture of a conversation in the background.
/// @param filled     In pixels: the picture covers this and is cut at its edges.
/// @param receiver   Nothing is told once it is gone.
/// @param handler    Called once, on the main queue; with a null image where the file does not decode.
void loadStoredPicture(
    const std::string& file, QSize filled, QObject& receiver, std::function<void(const QImage&)> handler);

} // namespace exifcard
