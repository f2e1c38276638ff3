#include "screens/EmptyStateView.h"

#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

#include <QImage>

namespace exifcard {
namespace {

TEST(EmptyStateViewTest, ItsTextsRunAsTheirOwnWordsDoWhereTheProgramIsMirrored) {
    UITraitCollection::setCurrentTraitCollection({}); // Whatever a test before has left.
    QWidget list;
    list.resize(375, 280);
    EmptyStateView view(list); // Everything stands in its middle.
    for (const auto reason : {EmptyListReason::NoAccess, EmptyListReason::NoPhotos}) {
        view.setReason(reason);
        const QImage plain = list.grab().toImage();
        UITraitCollection::setCurrentTraitCollection({.isRightToLeft = true});
        EXPECT_EQ(list.grab().toImage(), plain);
        UITraitCollection::setCurrentTraitCollection({});
    }
}

} // namespace
} // namespace exifcard
