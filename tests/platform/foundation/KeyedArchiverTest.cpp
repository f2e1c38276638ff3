#include "platform/foundation/KeyedArchiver.h"

#include "platform/foundation/PlatformException.h"
#include "platform/foundation/PropertyList.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

Data sample(const std::string& name) {
    const auto data = Data::mappedFile(std::string(EXIFCARD_TEST_DATA "/propertylists/") + name);
    EXPECT_TRUE(data) << name;
    return data.value_or(Data());
}

ArchivedObject exifKey(const Value& key, const Value& isHidden) {
    return {"ExifKey", {{"exifKey", key}, {"isHidden", isHidden}}};
}

ArchivedObject plain(const Value& value) {
    return {"", {{"", value}}};
}

TEST(KeyedArchiverTest, WritesThePlatformsOwnForm) {
    // Written by an independent program, reference for reference as the platform does.
    const Data expected = sample("field-list.keyedarchive");
    const std::vector<ArchivedObject> list = {exifKey("ApertureValue", false), exifKey("GPS", false)};
    const Data archive = keyedarchive::archivedDataWithRootArray(list);
    ASSERT_TRUE(propertylist::read(archive));
    EXPECT_EQ(propertylist::read(archive), propertylist::read(expected));
    EXPECT_EQ(keyedarchive::unarchiveRootArray(expected), list);
}

TEST(KeyedArchiverTest, FollowsReferencesInAnyOrder) {
    const auto shared = exifKey("Flash", true);
    const ArchivedObject odd = {"ExifKey", {{"exifKey", {}}, {"isHidden", true}, {"$odd", 42}}};
    const std::vector<ArchivedObject> expected = {
        shared, plain("plain text"), shared, plain(42), plain({}), odd};
    EXPECT_EQ(keyedarchive::unarchiveRootArray(sample("any-order.keyedarchive")), expected);
}

TEST(KeyedArchiverTest, ReadsBackWhatItWrote) {
    const std::vector<ArchivedObject> list = {
        exifKey("", -7),
        exifKey("Größe", {}),
        plain("text"),
        plain({}),
        {"Other", {{"$class", "own"}, {"$$", 0.5}, {"data", Data::fromText("x")}}},
        {"NSNull", {}},
    };
    EXPECT_EQ(keyedarchive::unarchiveRootArray(keyedarchive::archivedDataWithRootArray(list)), list);
    EXPECT_TRUE(keyedarchive::unarchiveRootArray(keyedarchive::archivedDataWithRootArray({})).empty());
}

TEST(KeyedArchiverTest, RefusesWhatIsNoArchiveOfAnArray) {
    for (const char* name : {"kinds.plist", "kinds.bplist", "uid-past-end.keyedarchive",
             "class-is-a-text.keyedarchive", "root-is-no-array.keyedarchive", "root-is-null.keyedarchive",
             "no-top.keyedarchive", "other-archiver.keyedarchive", "shared-object-many-times.keyedarchive",
             "array-in-itself.bplist"}) {
        SCOPED_TRACE(name);
        EXPECT_THROW(keyedarchive::unarchiveRootArray(sample(name)), PlatformException);
    }
    EXPECT_THROW(keyedarchive::unarchiveRootArray(Data()), PlatformException);
    const auto asXML = propertylist::writeXML(*propertylist::read(sample("field-list.keyedarchive")));
    EXPECT_THROW(keyedarchive::unarchiveRootArray(asXML), PlatformException);
}

TEST(KeyedArchiverTest, AnArrayInItselfEnds) {
    const auto elements = keyedarchive::unarchiveRootArray(sample("root-in-itself.keyedarchive"));
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0], (ArchivedObject{"NSMutableArray", {{"NS.objects", {}}}}));
}

} // namespace
} // namespace exifcard
