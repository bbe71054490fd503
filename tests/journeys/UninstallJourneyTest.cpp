// An application goes with what it left elsewhere, and with nothing of another one.
#include "Journey.h"

namespace vellmoor::journey {
namespace {

class UninstallJourney : public JourneyInEachLanguage {
protected:
    static void makeProgram(const fs::path& relative) {
        fs::permissions(makeFile(relative, 200'000), fs::perms::owner_all);
    }
    static void makeEntry(const std::string& identifier, const std::string& name, const std::string& program) {
        makeText(".local/share/applications/" + identifier + ".desktop",
                 "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + program + " %U\n");
    }

    /// Scans, unfolds the row of an application, ticks and cleans it.
    void uninstall(const std::string& name) {
        open();
        show(CleanerModule::appUninstaller);
        scan();
        ASSERT_NE(item(name), nullptr);
        EXPECT_FALSE(item(name)->isSelected) << "removing an application is never preselected";
        click(row(name) + QStringLiteral(".expand"));
        for (std::size_t path = 0; path < item(name)->targets.size(); ++path) {
            waitFor("the path", [&] { return isShown(row(name) + QStringLiteral(".target.%1").arg(path)); });
        }
        click(row(name) + QStringLiteral(".toggle"));
        waitFor("the tick", [&] { return item(name)->isSelected; });
        clean();
        EXPECT_EQ(store->latestReport()->failedCount, 0);
        EXPECT_EQ(item(name), nullptr) << "the page shows what is left";
    }
};
IN_BOTH_LANGUAGES(UninstallJourney);

TEST_P(UninstallJourney, AnAppImageGoesWithItsEntryAndItsLeftoversAndASimilarNameStays) {
    makeProgram("Applications/Painter-2.1-x86_64.AppImage");
    makeEntry("org.example.Painter", "Painter", (home() / "Applications/Painter-2.1-x86_64.AppImage").string());
    makeFile(".config/org.example.Painter/settings.ini", 4'000);
    makeFile(".cache/org.example.Painter/tiles/0", 90'000);
    makeFile(".local/share/org.example.Painter/brushes", 8'000);
    // Another application, installed for all users, whose name begins alike; and a folder of nobody's.
    makeEntry("org.example.PainterPro", "Painter Pro", "/usr/bin/true");
    makeFile(".config/org.example.PainterPro/settings.ini", 4'000);
    makeFile(".config/org.example.Paint/settings.ini", 4'000);
    makeFile("Documents/Painter/picture.kra", 4'000);

    uninstall("Painter");
    EXPECT_TRUE(isTrashed("Painter-2.1-x86_64.AppImage"));
    EXPECT_FALSE(has("Applications/Painter-2.1-x86_64.AppImage"));
    EXPECT_FALSE(has(".local/share/applications/org.example.Painter.desktop"));
    EXPECT_FALSE(has(".config/org.example.Painter"));
    EXPECT_FALSE(has(".cache/org.example.Painter"));
    EXPECT_FALSE(has(".local/share/org.example.Painter"));
    EXPECT_TRUE(has(".local/share/applications/org.example.PainterPro.desktop"));
    EXPECT_TRUE(has(".config/org.example.PainterPro/settings.ini"));
    EXPECT_TRUE(has(".config/org.example.Paint/settings.ini"));
    EXPECT_TRUE(has("Documents/Painter/picture.kra"));
}

TEST_P(UninstallJourney, AProgramFolderGoesWholeAndAnUntickedLeftoverStays) {
    makeProgram(".local/opt/drawtool/bin/drawtool");
    makeFile(".local/opt/drawtool/lib/data", 300'000);
    makeEntry("drawtool", "Drawtool", (home() / ".local/opt/drawtool/bin/drawtool").string());
    makeFile(".config/drawtool/settings.ini", 4'000);
    makeFile(".local/share/drawtool/templates", 4'000);
    open();
    show(CleanerModule::appUninstaller);
    scan();
    ASSERT_NE(item("Drawtool"), nullptr);
    click(row("Drawtool") + QStringLiteral(".expand"));
    click(row("Drawtool") + QStringLiteral(".toggle"));
    waitFor("the tick", [&] { return item("Drawtool")->isSelected; });
    const auto& targets = item("Drawtool")->targets;
    const auto templates =
        std::ranges::find(targets, SharedPath(home() / ".local/share/drawtool"), &CleanupTarget::url);
    ASSERT_NE(templates, targets.end());
    click(row("Drawtool") + QStringLiteral(".target.%1.toggle").arg(templates - targets.begin()));
    waitFor("the tick to go",
            [&] { return !std::ranges::all_of(item("Drawtool")->targets, &CleanupTarget::isSelected); });

    clean();
    EXPECT_EQ(store->latestReport()->failedCount, 0);
    EXPECT_FALSE(has(".local/opt/drawtool"));
    EXPECT_FALSE(has(".config/drawtool"));
    EXPECT_FALSE(has(".local/share/applications/drawtool.desktop"));
    EXPECT_TRUE(has(".local/share/drawtool/templates"));
}

} // namespace
} // namespace vellmoor::journey
