#include "Views/Pages/PageEngine.h"

#include "Fakes/DiagnosticsCapture.h"

#include <QTemporaryDir>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(PageEngine, says_why_it_could_not_be_loaded) {
    const QTemporaryDir empty;
    DiagnosticsCapture output;
    EXPECT_FALSE(loadPageEngine(empty.path()));
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(u"⚠️ [WebView] "_s)) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].contains(u"libwrapio-pages.so"_s)) << lines[0].toStdString();
}

}  // namespace wrapio
