#include "Platform/Linux/Machine.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

void addDevice(const QTemporaryDir& devices, const QString& name) {
    QFile file(devices.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

TEST(MachineTest, a_render_node_is_something_to_draw_with) {
    const QTemporaryDir devices;
    addDevice(devices, u"card0"_s);
    addDevice(devices, u"renderD128"_s);
    EXPECT_TRUE(hasRenderNode(devices.path()));
}

TEST(MachineTest, a_screen_that_only_shows_is_nothing_to_draw_with) {
    const QTemporaryDir devices;
    addDevice(devices, u"card0"_s);
    EXPECT_FALSE(hasRenderNode(devices.path()));
}

TEST(MachineTest, there_may_be_no_devices_at_all) {
    const QTemporaryDir devices;
    EXPECT_FALSE(hasRenderNode(devices.filePath(u"none"_s)));
}

}  // namespace
}  // namespace wrapio
