#include "Services/VersionManager.h"

#include "Fakes/FakeResources.h"
#include "Services/ServiceFixture.h"

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

class VersionManagerTest : public ServiceFixture {
protected:
    FakeResources resources;
    VersionManager versions{resources, files};

    void putInformation(const QByteArray& bytes) {
        const QString bundle = temporary.path(u"WrapioRunner.app"_s);
        ASSERT_TRUE(temporary.createDirectories(bundle + u"/Contents"_s));
        ASSERT_TRUE(temporary.write(bundle + u"/Contents/Info.plist"_s, bytes));
        resources.paths[u"WrapioRunner.app"_s] = bundle;
    }
    static QByteArray plist(const QByteArray& content) {
        return "<plist version=\"1.0\"><dict>" + content + "</dict></plist>";
    }
};

TEST_F(VersionManagerTest, ReadsTheVersionOfTheTemplateEachTime) {
    putInformation(plist("<key>CFBundleShortVersionString</key><string>2.3.4</string>"));
    DiagnosticsCapture output;
    EXPECT_EQ(versions.runnerTemplateVersion(), u"2.3.4"_s);
    putInformation(plist("<key>CFBundleShortVersionString</key><string>2.4</string>"));
    EXPECT_EQ(versions.runnerTemplateVersion(), u"2.4"_s);
    EXPECT_TRUE(output.lines().isEmpty());
}

TEST_F(VersionManagerTest, WarnsOncePerRequestWithoutATemplate) {
    DiagnosticsCapture output;
    EXPECT_EQ(versions.runnerTemplateVersion(), u"1.0.0"_s);
    EXPECT_EQ(versions.runnerTemplateVersion(), u"1.0.0"_s);
    const QString line = u"⚠️ [VersionManager] Could not find WrapioRunner template to determine version"_s;
    EXPECT_EQ(output.lines(), (QStringList{line, line}));
}

TEST_F(VersionManagerTest, SaysNothingWhenTheTemplateHasNoVersion) {
    DiagnosticsCapture output;
    for (const QByteArray& bytes :
         {plist(""), plist("<key>CFBundleShortVersionString</key><integer>3</integer>"), QByteArray("broken")}) {
        putInformation(bytes);
        EXPECT_EQ(versions.runnerTemplateVersion(), u"1.0.0"_s);
    }
    resources.paths[u"WrapioRunner.app"_s] = temporary.path(u"nowhere.app"_s);
    EXPECT_EQ(versions.runnerTemplateVersion(), u"1.0.0"_s);
    EXPECT_TRUE(output.lines().isEmpty());
}

struct Comparison {
    const char* name;
    const char* version;
    const char* other;
    bool isNewer;
};
class VersionComparisonTest : public testing::TestWithParam<Comparison> {};

TEST_P(VersionComparisonTest, HoldsInBothDirections) {
    const QString version = QString::fromLatin1(GetParam().version);
    const QString other = QString::fromLatin1(GetParam().other);
    EXPECT_EQ(VersionManager::isVersion(version, other), GetParam().isNewer);
    EXPECT_FALSE(VersionManager::isVersion(other, version));
}

INSTANTIATE_TEST_SUITE_P(
    Versions, VersionComparisonTest,
    testing::Values(Comparison{"EqualVersionsAreNeverNewer", "1.2.3", "1.2.3", false},
                    Comparison{"NumbersCountNotLetters", "1.10", "1.9", true},
                    Comparison{"AMinorVersionIsNewerThanAPatch", "1.2", "1.1.9", true},
                    Comparison{"AMissingNumberIsZero", "1.2.0", "1.2", false},
                    Comparison{"TheFirstDifferenceDecides", "2", "1.99.99", true},
                    Comparison{"WithoutNumbersItIsLikeZero", "beta", "0", false},
                    Comparison{"WithoutNumbersItIsOlderThanAny", "0.1", "beta", true},
                    Comparison{"EmptyIsLikeZero", "", "0.0", false},
                    Comparison{"EmptyPiecesAreDropped", "1..2", "1.2", false},
                    Comparison{"APieceThatIsNoNumberIsDropped", "1.0-beta.5", "1.4", true},
                    Comparison{"SpacesAreNoPartOfANumber", "1.2", "1. 9", true},
                    Comparison{"ASignIs", "1.+2", "1.2", false}, Comparison{"TwoSignsAreNot", "1.1", "1.+-2", true},
                    Comparison{"NegativeNumbersAreOlderThanMissingOnes", "1", "1.-1", true},
                    Comparison{"ANumberThatIsTooLargeIsDropped", "1.1", "1.9223372036854775808", true}),
    [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace wrapio
