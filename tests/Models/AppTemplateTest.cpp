#include "Models/AppTemplate.h"

#include <gtest/gtest.h>

namespace wrapio {
TEST(AppTemplate, keeps_its_stable_ids_from_run_to_run) {
    using namespace Qt::StringLiterals;
    const auto& popular = AppTemplate::popular();
    ASSERT_EQ(popular.size(), 3U);
    EXPECT_EQ(popular[0].stableId, u"google-gmail"_s);
    EXPECT_EQ(popular[1].stableId, u"google-calendar"_s);
    EXPECT_EQ(popular[2].stableId, u"youtube"_s);
    ASSERT_EQ(AppTemplate::devTemplates().size(), 1U);
    EXPECT_EQ(AppTemplate::devTemplates()[0].stableId, u"localhost-dev"_s);
}
}  // namespace wrapio
