#include "platform/uikit/SteadyLabel.h"

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr QStringView kDigits = u"0123456789";
constexpr int kSlack = 2; ///< Pairs of signs may stand a little apart.

bool isDigit(QChar character) {
    return kDigits.contains(character);
}

} // namespace

SteadyLabel::SteadyLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignVCenter | Qt::AlignLeading);
}

int SteadyLabel::steadyWidth() const {
    const QFontMetricsF metrics(font());
    const QChar widestDigit = *std::ranges::max_element(
        kDigits, {}, [&metrics](QChar digit) { return metrics.horizontalAdvance(digit); });
    QString widest = text();
    std::replace_if(widest.begin(), widest.end(), isDigit, widestDigit);
    return static_cast<int>(std::ceil(metrics.horizontalAdvance(widest))) + kSlack;
}

QSize SteadyLabel::sizeHint() const {
    return {steadyWidth(), QLabel::sizeHint().height()};
}

} // namespace exifcard
