#include "screens/EmptyStateView.h"

#include <gtest/gtest.h>

#include <QImage>

namespace exifcard {
namespace {

TEST(EmptyStateViewTest, ItsTextsRunAsTheirOwnWordsDoWhateverTheWindowsDirection) {
    QWidget list;
    list.resize(375, 280);
    EmptyStateView view(list);
    view.setReason(EmptyListReason::NoAccess); // Of two sentences; everything stands in the middle.
    const QImage fromLeft = list.grab().toImage();
    list.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(list.grab().toImage(), fromLeft);
}

} // namespace
} // namespace exifcard
