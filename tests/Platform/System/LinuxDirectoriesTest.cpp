#include "Platform/Linux/LinuxDirectories.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

UserSurroundings surroundings(std::map<std::string, QString> variables, std::optional<QString> accountHome = {}) {
    return {[variables = std::move(variables)](const char* name) -> std::optional<QString> {
                const auto found = variables.find(name);
                return found == variables.end() ? std::nullopt : std::optional(found->second);
            },
            std::move(accountHome)};
}

TEST(LinuxDirectoriesTest, WithoutVariablesTheFoldersLieInTheHomeFolder) {
    const auto directories = linuxDirectories(surroundings({{"HOME", u"/home/ada"_s}}));
    ASSERT_TRUE(directories);
    EXPECT_EQ(directories->home, u"/home/ada"_s);
    EXPECT_EQ(directories->applicationSupport, u"/home/ada/.local/share"_s);
    EXPECT_EQ(directories->caches, u"/home/ada/.cache"_s);
    EXPECT_EQ(directories->configuration, u"/home/ada/.config/Wrapio"_s);
    EXPECT_EQ(directories->temporary, u"/tmp"_s);
    EXPECT_EQ(directories->generatedApps(), u"/home/ada/Applications/Wrapio Apps"_s);
}

TEST(LinuxDirectoriesTest, VariablesMoveTheFolders) {
    const auto directories = linuxDirectories(surroundings({{"HOME", u"/home/ada/"_s},
                                                            {"XDG_DATA_HOME", u"/data//"_s},
                                                            {"XDG_CACHE_HOME", u"/fast/cache/"_s},
                                                            {"XDG_CONFIG_HOME", u"/etc/../conf"_s},
                                                            {"TMPDIR", u"/var/tmp/"_s}}));
    ASSERT_TRUE(directories);
    EXPECT_EQ(directories->home, u"/home/ada"_s);
    EXPECT_EQ(directories->applicationSupport, u"/data"_s);
    EXPECT_EQ(directories->caches, u"/fast/cache"_s);
    EXPECT_EQ(directories->configuration, u"/conf/Wrapio"_s);
    EXPECT_EQ(directories->temporary, u"/var/tmp"_s);
}

TEST(LinuxDirectoriesTest, VariablesThatAreNotAbsoluteCountAsUnset) {
    const auto directories = linuxDirectories(surroundings({{"HOME", u"/home/ada"_s},
                                                            {"XDG_DATA_HOME", u"data"_s},
                                                            {"XDG_CACHE_HOME", QString()},
                                                            {"XDG_CONFIG_HOME", u"~/conf"_s},
                                                            {"TMPDIR", u"."_s}}));
    ASSERT_TRUE(directories);
    EXPECT_EQ(directories->applicationSupport, u"/home/ada/.local/share"_s);
    EXPECT_EQ(directories->caches, u"/home/ada/.cache"_s);
    EXPECT_EQ(directories->configuration, u"/home/ada/.config/Wrapio"_s);
    EXPECT_EQ(directories->temporary, u"/tmp"_s);
}

TEST(LinuxDirectoriesTest, TheAccountTellsTheHomeFolderWhenTheEnvironmentDoesNot) {
    EXPECT_EQ(linuxDirectories(surroundings({}, u"/home/eve"_s))->home, u"/home/eve"_s);
    EXPECT_EQ(linuxDirectories(surroundings({{"HOME", u"here"_s}}, u"/home/eve"_s))->home, u"/home/eve"_s);
    EXPECT_EQ(linuxDirectories(surroundings({{"HOME", u"/"_s}}, u"/home/eve"_s))->home, u"/home/eve"_s);
}

TEST(LinuxDirectoriesTest, AnAccountWithoutAHomeFolderHasNoDirectories) {
    EXPECT_FALSE(linuxDirectories(surroundings({})));
    EXPECT_FALSE(linuxDirectories(surroundings({}, u"/"_s)));
}

TEST(LinuxDirectoriesTest, ThisProcessHasTheFoldersOfItsEnvironment) {
    const auto directories = linuxDirectories();
    ASSERT_TRUE(directories);
    EXPECT_EQ(directories->home, qEnvironmentVariable("HOME"));
    EXPECT_EQ(directories->configuration, qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Wrapio"_s);
    EXPECT_TRUE(currentSurroundings().accountHome);
}

}  // namespace
}  // namespace wrapio
