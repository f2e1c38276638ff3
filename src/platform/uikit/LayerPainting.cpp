#include "platform/uikit/LayerPainting.h"

#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIView.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QRectF>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace exifcard {
namespace {

/// How many standard deviations a blur is seen.
constexpr double kBlurReach = 2.5;

/// A shadow as small as it can be drawn: its edges keep their size, one row and one column in the middle are
/// stretched.
struct Patch {
    QSizeF caster;     ///< What casts it, in points.
    double corner = 0; ///< Points, of the caster.
    double blur = 0;   ///< The standard deviation, in points.
    QColor color;
    double scale = 1;

    double reach() const { return std::ceil(blur * kBlurReach); }
    QSizeF size() const { return caster + QSizeF(2 * reach(), 2 * reach()); }
};

std::vector<double> gaussianKernel(double deviation) {
    const int reach = static_cast<int>(std::ceil(deviation * kBlurReach));
    std::vector<double> kernel;
    for (int offset = -reach; offset <= reach; ++offset) {
        kernel.push_back(deviation > 0 ? std::exp(-offset * offset / (2 * deviation * deviation)) : 1);
    }
    const double sum = std::accumulate(kernel.begin(), kernel.end(), 0.0);
    std::ranges::for_each(kernel, [sum](double& weight) { weight /= sum; });
    return kernel;
}

/// The opacities blurred along the rows, and rows and columns changed over: twice gives a blurred picture.
QImage blurredAndTurned(const QImage& opacities, const std::vector<double>& kernel) {
    QImage turned(opacities.height(), opacities.width(), QImage::Format_Alpha8);
    const int reach = static_cast<int>(kernel.size() / 2);
    for (int y = 0; y < opacities.height(); ++y) {
        const uchar* const row = opacities.constScanLine(y);
        for (int x = 0; x < opacities.width(); ++x) {
            double sum = 0;
            const int last = std::min(x + reach, opacities.width() - 1);
            for (int from = std::max(x - reach, 0); from <= last; ++from) {
                sum += row[from] * kernel[static_cast<std::size_t>(from - x + reach)];
            }
            turned.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
        }
    }
    return turned;
}

QPixmap drawnPatch(const Patch& patch) {
    const QSize pixels = (patch.size() * patch.scale).toSize().expandedTo({1, 1});
    QImage opacities(pixels, QImage::Format_Alpha8);
    opacities.fill(0);
    QPainter painter(&opacities);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(patch.scale, patch.scale);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF({patch.reach(), patch.reach()}, patch.caster), patch.corner, patch.corner);
    painter.end();
    const auto kernel = gaussianKernel(patch.blur * patch.scale);
    const QImage blurred = blurredAndTurned(blurredAndTurned(opacities, kernel), kernel);

    QImage colored(pixels, QImage::Format_ARGB32_Premultiplied);
    colored.fill(patch.color);
    QPainter masking(&colored);
    masking.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    masking.drawImage(0, 0, blurred);
    masking.end();
    return QPixmap::fromImage(colored);
}

QPixmap keptPatch(const Patch& patch) {
    const auto key = QStringLiteral("shadow %1 %2 %3 %4 %5 %6")
                         .arg(patch.caster.width())
                         .arg(patch.caster.height())
                         .arg(patch.corner)
                         .arg(patch.blur)
                         .arg(patch.color.rgba(), 0, 16)
                         .arg(patch.scale);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawnPatch(patch);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

/// Where a stretched picture is cut along one axis: begin, end of the near edge, begin of the far edge, end.
struct Cuts {
    double at[4];
};

Cuts cuts(double begin, double length, double edge) {
    return {{begin, begin + edge, begin + length - edge, begin + length}};
}

void drawStretched(
    QPainter& painter, const QPixmap& pixmap, const QRectF& target, QSizeF edges, double scale) {
    const Cuts targetColumns = cuts(target.x(), target.width(), edges.width());
    const Cuts targetRows = cuts(target.y(), target.height(), edges.height());
    const Cuts sourceColumns = cuts(0, pixmap.width(), edges.width() * scale);
    const Cuts sourceRows = cuts(0, pixmap.height(), edges.height() * scale);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const auto part = [row, column](const Cuts& columns, const Cuts& rows) {
                return QRectF(QPointF(columns.at[column], rows.at[row]),
                    QPointF(columns.at[column + 1], rows.at[row + 1]));
            };
            const QRectF source = part(sourceColumns, sourceRows);
            if (!source.isEmpty()) {
                painter.drawPixmap(part(targetColumns, targetRows), pixmap, source);
            }
        }
    }
}

QRectF shadowCaster(const CALayer& layer, const QRectF& bounds) {
    QRectF caster = bounds;
    if (layer.shadowPath) {
        const CGRect& path = *layer.shadowPath;
        caster =
            QRectF(bounds.x() + path.origin.x, bounds.y() + path.origin.y, path.size.width, path.size.height);
    }
    return caster.translated(layer.shadowOffset.width, layer.shadowOffset.height);
}

} // namespace

void paintLayer(QPainter& painter, const CALayer& layer, const QRectF& bounds) {
    const QColor background = qColor(layer.backgroundColor);
    const QColor border = qColor(layer.borderColor);
    const double corner = std::min({layer.cornerRadius, bounds.width() / 2, bounds.height() / 2});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, corner > 0);
    if (background.alpha() > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(background);
        painter.drawRoundedRect(bounds, corner, corner);
    }
    if (layer.borderWidth > 0 && border.alpha() > 0) {
        const double inner = std::max(corner - layer.borderWidth, 0.0);
        const double width = layer.borderWidth;
        QPainterPath frame;
        frame.addRoundedRect(bounds, corner, corner);
        frame.addRoundedRect(bounds.adjusted(width, width, -width, -width), inner, inner);
        painter.fillPath(frame, border);
    }
    painter.restore();
}

QRectF shadowBounds(const CALayer& layer, const QRectF& bounds) {
    if (layer.shadowOpacity <= 0 || layer.shadowRadius < 0) {
        return {};
    }
    const double reach = std::ceil(layer.shadowRadius * kBlurReach);
    return shadowCaster(layer, bounds).adjusted(-reach, -reach, reach, reach);
}

void paintShadow(QPainter& painter, const CALayer& layer, const QRectF& bounds) {
    const QRectF caster = shadowCaster(layer, bounds);
    const QRectF target = shadowBounds(layer, bounds);
    if (target.isEmpty() || caster.isEmpty()) {
        return;
    }
    Patch patch;
    patch.corner = std::min({layer.cornerRadius, caster.width() / 2, caster.height() / 2});
    patch.blur = layer.shadowRadius;
    patch.color = qColor(layer.shadowColor);
    patch.color.setAlphaF(patch.color.alphaF() * static_cast<float>(std::min(layer.shadowOpacity, 1.0)));
    patch.scale = painter.device()->devicePixelRatioF();
    // The blur reaches inward too; what is narrower than both edges is drawn in its own size.
    const double edge = std::ceil(patch.corner) + 2 * patch.reach();
    const double stretchable = 2 * (edge - patch.reach()) + 1;
    patch.caster = {std::min(caster.width(), stretchable), std::min(caster.height(), stretchable)};
    const QSizeF edges(std::min(edge, target.width() / 2), std::min(edge, target.height() / 2));
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawStretched(painter, keptPatch(patch), target, edges, patch.scale);
    painter.restore();
}

void paintShadowsOfChildren(QPainter& painter, const QWidget& parent) {
    for (const QObject* const child : parent.children()) {
        const auto* const view = qobject_cast<const UIView*>(child);
        if (view && !view->isHidden() && view->layer().shadowOpacity > 0) {
            paintShadow(painter, view->layer(), view->geometry());
        }
    }
}

} // namespace exifcard
