// Caches of developers' tools on Linux: where they lie, and what beside them is the user's.
#include "junk/JunkFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor {
namespace {

using test::LinuxJunk;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

TEST_F(LinuxJunk, NothingStandsInBothTheCacheRowAndTheDeveloperRow) {
    for (const char* name : {"yarn",
                             "pnpm",
                             "deno",
                             "pip",
                             "uv",
                             "pypoetry/cache",
                             "pypoetry/virtualenvs",
                             "pipenv",
                             "pre-commit",
                             "go-build",
                             "ccache",
                             "sccache",
                             "bazel",
                             "bazelisk",
                             "vcpkg",
                             "composer",
                             "gem",
                             "JetBrains/IdeaIC2024.1/caches",
                             "Google/AndroidStudio2024/index",
                             "node-gyp",
                             "electron",
                             "electron-builder",
                             "typescript",
                             "Cypress",
                             "ms-playwright",
                             "puppeteer",
                             "prisma",
                             "zig",
                             "rebar3",
                             "cabal",
                             "org.swift.swiftpm",
                             "coursier",
                             "helm",
                             "R",
                             "huggingface/hub",
                             "torch",
                             "whisper",
                             "gpt4all",
                             "lm-studio",
                             "modelscope",
                             "kagglehub"}) {
        home.file(Path(".cache") / name / "a");
    }
    home.file(".cache/thumbnails/a");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
    const auto developer = targets("Developer Caches");
    EXPECT_THAT(developer, Contains(".cache/pip"));
    EXPECT_THAT(developer, Contains(".cache/JetBrains/IdeaIC2024.1/caches"));
    EXPECT_THAT(developer, Contains(".cache/Google/AndroidStudio2024/index"));
    EXPECT_THAT(developer, Contains(".cache/kagglehub"));
    EXPECT_THAT(developer, Not(Contains(".cache/pypoetry/virtualenvs")));
}

TEST_F(LinuxJunk, EveryDeveloperCacheOfTheTableIsFoundInItsOrder) {
    const std::vector<std::string> folders{".npm/_cacache",
                                           ".npm/_npx",
                                           ".cache/yarn",
                                           ".yarn/berry/cache",
                                           ".local/share/pnpm/store",
                                           ".cache/pnpm",
                                           ".bun/install/cache",
                                           ".cache/deno",
                                           ".cache/pip",
                                           ".cache/uv",
                                           ".cache/pypoetry/cache",
                                           ".cache/pypoetry/artifacts",
                                           ".cache/pipenv",
                                           ".cache/pre-commit",
                                           ".cargo/registry/index",
                                           ".cargo/registry/cache",
                                           ".cargo/registry/src",
                                           ".cargo/git/db",
                                           ".cargo/git/checkouts",
                                           ".cache/go-build",
                                           "go/pkg/mod",
                                           ".gradle/caches",
                                           ".gradle/wrapper/dists",
                                           ".gradle/daemon",
                                           ".m2/wrapper/dists",
                                           ".cache/ccache",
                                           ".cache/sccache",
                                           ".cache/bazel",
                                           ".cache/bazelisk",
                                           ".cache/vcpkg",
                                           ".nuget/packages",
                                           ".local/share/NuGet/v3-cache",
                                           ".local/share/NuGet/http-cache",
                                           ".local/share/NuGet/plugins-cache",
                                           ".cache/composer",
                                           ".composer/cache",
                                           ".bundle/cache",
                                           ".gem/specs",
                                           ".cache/gem",
                                           ".config/Code/Cache",
                                           ".config/Code/CachedData",
                                           ".config/Code/CachedExtensionVSIXs",
                                           ".config/Code/Code Cache",
                                           ".config/Code/GPUCache",
                                           ".config/Code/DawnGraphiteCache",
                                           ".config/Code/DawnWebGPUCache",
                                           ".config/Code - Insiders/Cache",
                                           ".config/Code - OSS/Cache",
                                           ".config/VSCodium/Cache",
                                           ".config/Cursor/Cache",
                                           ".android/cache",
                                           ".android/build-cache",
                                           ".cache/node-gyp",
                                           ".cache/electron",
                                           ".cache/electron-builder",
                                           ".cache/typescript",
                                           ".cache/Cypress",
                                           ".cache/ms-playwright",
                                           ".cache/puppeteer",
                                           ".cache/prisma",
                                           ".cache/zig",
                                           ".cache/rebar3",
                                           ".cache/cabal",
                                           ".cache/org.swift.swiftpm",
                                           ".cache/coursier",
                                           ".cache/helm",
                                           ".cache/R",
                                           ".ivy2/cache",
                                           ".pub-cache/hosted",
                                           ".cache/huggingface/hub",
                                           ".cache/huggingface/datasets",
                                           ".cache/huggingface/xet",
                                           ".cache/huggingface/assets",
                                           ".cache/torch",
                                           ".cache/whisper",
                                           ".cache/gpt4all",
                                           ".cache/lm-studio",
                                           ".cache/modelscope",
                                           ".cache/kagglehub"};
    for (const std::string& folder : folders) {
        home.file(Path(folder) / "a");
    }
    EXPECT_EQ(targets("Developer Caches"), folders);
}

TEST_F(LinuxJunk, WhatOnlyLooksLikeADeveloperCacheStays) {
    for (const char* path : {".local/share/virtualenvs/a/x",
                             ".local/share/pipx/x",
                             ".local/share/uv/x",
                             ".rustup/x",
                             ".cargo/bin/x",
                             ".nvm/x",
                             ".pyenv/x",
                             ".sdkman/x",
                             ".cache/JetBrains/Idea/LocalHistory/x",
                             ".cache/huggingface/token",
                             ".cache/huggingface/stored_tokens",
                             ".m2/repository/x",
                             ".conan/x",
                             ".conan2/x",
                             ".config/Code/User/x",
                             ".config/Code/Backups/x",
                             ".config/Code/Workspaces/x",
                             ".android/avd/x",
                             ".android/adbkey",
                             ".android/debug.keystore",
                             ".ollama/x",
                             ".terraform.d/x",
                             ".cache/pypoetry/virtualenvs/x"}) {
        home.file(path);
    }
    const auto items = scan();
    EXPECT_FALSE(items.empty());
    for (const CleanupItem& item : items) {
        EXPECT_THAT(item.targets, IsEmpty()) << item.title;
    }
}

TEST_F(LinuxJunk, AToolsVariableIsProbedBesideItsDefault) {
    home.environment.toolFolders["CARGO_HOME"] = home.home / "cargo";
    home.useEnvironment();
    home.file("cargo/registry/cache/a");
    home.file(".cargo/registry/cache/a");
    EXPECT_THAT(targets("Developer Caches"), UnorderedElementsAre("cargo/registry/cache", ".cargo/registry/cache"));
}

TEST_F(LinuxJunk, AVariableThatNamesTheDefaultCountsOnce) {
    home.environment.toolFolders["PIP_CACHE_DIR"] = home.home / ".cache/pip";
    home.useEnvironment();
    home.file(".cache/pip/a");
    EXPECT_THAT(targets("Developer Caches"), ElementsAre(".cache/pip"));
}

TEST_F(LinuxJunk, OldCcacheFoldersAreListedOneByOne) {
    home.file(".ccache/0/a");
    home.file(".ccache/f/a");
    home.file(".ccache/tmp/a");
    home.file(".ccache/ccache.conf");
    EXPECT_THAT(targets("Developer Caches"), UnorderedElementsAre(".ccache/0", ".ccache/f", ".ccache/tmp"));
}

} // namespace
} // namespace vellmoor
