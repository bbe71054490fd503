#include "call/HelpPage.h"

#include "texts/L.h"

namespace vellmoor::cli {
namespace {

// Pages, not texts with arguments: they are written here as they are read.
constexpr auto englishPage = R"(Usage: vellmoor-cli COMMAND [OPTION]...
Finds the space that can be got back, and moves what you choose to the Trash.

  scan [MODULE]     shows what can be cleaned; changes nothing
  clean MODULE      moves the preselected safe rows [x] of a scan to the Trash; needs --yes
  history           lists the cleans of the last 90 days
  put-back [CLEAN]  puts back what a clean moved to the Trash: the last one, or one that history lists
  keep PATH...      never offer these, nor anything below them
  kept              lists the kept paths
  offer PATH...     offer these again

MODULE is one of smartScan (all of them, the default of scan), systemJunk, largeFiles, privacy, appUninstaller,
performance, memoryOptimization, trash.

Options of clean
  --yes             do it; without it, --dry-run is needed
  --dry-run         show what would go, change nothing (put-back knows it, too)
  --tick ROW        clean this row as well; ROW is the key that scan prints, or a title in either language
  --only            clean the rows of --tick and no others
  --for-good        also what cannot be put back: rows of the Trash, and Flatpak applications
  --memory          also free memory

Options of all commands
  --json            print JSON (scan, clean, history, put-back, kept)
  --quiet           no progress on standard error (scan, clean, put-back)
  --language zh|en  the language of all texts; otherwise that of the locale
  --help, --version

Exit status: 0 done, 1 something failed, 2 wrong call, 3 nothing to do.
As root it only reads.
)";

constexpr auto chinesePage = R"(用法：vellmoor-cli 命令 [选项]...
找出可以收回的空间，并把你选择的项目移到废纸篓。

  scan [模块]       显示可清理的项目，不改动任何文件
  clean 模块        把扫描中默认勾选的安全项目 [x] 移到废纸篓；需要 --yes
  history           列出最近 90 天的清理
  put-back [清理]   放回一次清理移到废纸篓的项目：最近一次，或 history 列出的某一次
  keep 路径...      不再提供这些路径及其下的任何项目
  kept              列出保留的路径
  offer 路径...     重新提供这些路径

模块：smartScan（全部，scan 的默认值）、systemJunk、largeFiles、privacy、appUninstaller、performance、
memoryOptimization、trash。

clean 的选项
  --yes             执行；否则需要 --dry-run
  --dry-run         只显示会移除什么，不改动任何文件（put-back 也可用）
  --tick 行         同时清理此行；用 scan 显示的键名，或任一语言的标题
  --only            只清理 --tick 指定的行
  --for-good        包括无法放回的项目：废纸篓中的行和 Flatpak 应用
  --memory          同时释放内存

通用选项
  --json            输出 JSON（scan、clean、history、put-back、kept）
  --quiet           不在标准错误上显示进度（scan、clean、put-back）
  --language zh|en  所有文字的语言；默认按系统区域设置
  --help, --version

退出状态：0 完成，1 有失败，2 用法错误，3 无事可做。
以 root 身份运行时只读取。
)";

} // namespace

std::string helpPage() {
    return L::language() == AppLanguage::chinese ? chinesePage : englishPage;
}

} // namespace vellmoor::cli
