#include "applications/ReleaseName.h"

#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

TEST(ReleaseName, LosesExtensionVersionMachineAndSystem) {
    EXPECT_EQ(releaseName("Obsidian-1.5.3.AppImage"), "Obsidian");
    EXPECT_EQ(releaseName("nvim-linux-x86_64.appimage"), "nvim");
    EXPECT_EQ(releaseName("tool_v2.0.1_amd64.AppImage"), "tool");
    EXPECT_EQ(releaseName("Krita 5.2.2-aarch64.AppImage"), "Krita");
    EXPECT_EQ(releaseName("Inkscape-1.3rc1-Linux.AppImage"), "Inkscape");
    EXPECT_EQ(releaseName("Tool-1.2"), "Tool");
    EXPECT_EQ(releaseName("tool.x86_64"), "tool");
}

TEST(ReleaseName, KeepsWhatBelongsToTheName) {
    EXPECT_EQ(releaseName("Paint-3d.AppImage"), "Paint-3d");
    EXPECT_EQ(releaseName("My-Editor.AppImage"), "My-Editor");
    EXPECT_EQ(releaseName("1.2.AppImage"), "1.2");
    EXPECT_EQ(releaseName("linux.AppImage"), "linux");
    EXPECT_EQ(releaseName("-1.AppImage"), "-1");
    EXPECT_EQ(releaseName(".AppImage"), ".AppImage");
}

TEST(WithoutVersion, LosesTheNumbersAtTheEndOnly) {
    EXPECT_EQ(withoutVersion("Krita 5.2"), "Krita");
    EXPECT_EQ(withoutVersion("tool-1.2-v3"), "tool");
    EXPECT_EQ(withoutVersion("My Editor.conf"), "My Editor.conf");
    EXPECT_EQ(withoutVersion("Paint-3d"), "Paint-3d");
    EXPECT_EQ(withoutVersion("2.0"), "2.0");
    EXPECT_EQ(withoutVersion(""), "");
}

} // namespace
} // namespace vellmoor::test
