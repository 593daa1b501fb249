#include "Services/CollectionRecords.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QString reasonFor(const QByteArray& json, const CollectionLimits& limits = {}) {
    const auto decoded = decodeCollection(json, limits);
    return decoded ? u"none"_s : decoded.error().reason;
}

}  // namespace

TEST(CollectionRecords, reads_records_whatever_the_order_of_their_keys) {
    const auto records = decodeCollection(R"([{"sortOrder":7,"appName":"A"},{"appName":"B","allowedHosts":["h"]}])");
    ASSERT_TRUE(records);
    ASSERT_EQ(records->size(), 2U);
    EXPECT_EQ(records->at(0).sortOrder, 7);
    EXPECT_EQ(records->at(1).allowedHosts, std::vector<QString>{u"h"_s});
}

TEST(CollectionRecords, ignores_keys_of_versions_to_come) {
    EXPECT_TRUE(decodeCollection(R"([{"appName":"A","future":{"a":[1,{"b":null}]}}])"));
}

TEST(CollectionRecords, reads_up_to_the_stated_number_of_records) {
    EXPECT_TRUE(decodeCollection("[{},{}]", {.records = 2}));
    EXPECT_EQ(reasonFor("[{},{},{}]", {.records = 2}), u"the list holds more than 2 records"_s);
    EXPECT_EQ(reasonFor("[0,0,0]", {.records = 2}), u"the list holds more than 2 records"_s);
}

TEST(CollectionRecords, reads_up_to_the_stated_number_of_values) {
    EXPECT_TRUE(decodeCollection(R"([{"appName":"A"}])", {.values = 3}));
    EXPECT_EQ(reasonFor(R"([{"appName":"A","x":[]}])", {.values = 3}), u"the list holds more than 3 values"_s);
}

TEST(CollectionRecords, refuses_objects_of_many_members_in_time) {
    QByteArray json = "[{";
    for (int i = 0; i < 2'000'000; ++i)
        json += '"' + QByteArray::number(i) + "\":0,";
    json += "\"last\":0}]";
    EXPECT_EQ(reasonFor(json), u"an object has more than 1000 members"_s);
}

TEST(CollectionRecords, refuses_deep_nesting) {
    EXPECT_EQ(reasonFor(QByteArray(10'000'000, '[')), u"values are nested too deeply"_s);
    EXPECT_EQ(reasonFor(QByteArray(R"({"a":)").repeated(1'000'000)), u"values are nested too deeply"_s);
}

TEST(CollectionRecords, says_briefly_what_is_wrong_with_a_broken_text) {
    for (const QByteArray& json : {QByteArray(), QByteArray("["), QByteArray("[{]"), QByteArray("\xFF"),
                                   QByteArray("[\"") + QByteArray(1'000'000, 'x')}) {
        const QString reason = reasonFor(json);
        EXPECT_NE(reason, u"none"_s);
        EXPECT_FALSE(reason.isEmpty());
        EXPECT_LE(reason.size(), 200);
    }
}

TEST(CollectionRecords, refuses_what_is_no_list_of_objects) {
    for (const char* const json : {"{}", "null", "1", "[[]]", "[null]"})
        EXPECT_FALSE(decodeCollection(json)) << json;
}

}  // namespace wrapio
