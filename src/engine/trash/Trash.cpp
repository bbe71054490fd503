#include "trash/Trash.h"

#include "PercentText.h"
#include "Platform.h"
#include "disk/Paths.h"
#include "scan/AccessLimited.h"
#include "scan/PathMeasurement.h"
#include "trash/TrashNotes.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace vellmoor {
namespace {

/// Facts of what `path` names after all links.
std::optional<FileFacts> resolvedFacts(const Platform& platform, const Path& path) {
    const std::optional<Path> real = platform.realPath(path);
    return platform.facts(real.value_or(path));
}

bool isStickyRealFolder(const Platform& platform, const Path& path) {
    const std::optional<FileFacts> facts = platform.facts(path);
    return facts && facts->isDirectory && !facts->isSymlink && facts->isSticky;
}

bool isAccepted(const Platform& platform, const VolumeTrashForm& form, const Path& folder) {
    if (form.needsStickyParent && !isStickyRealFolder(platform, folder.parent_path())) {
        return false;
    }
    return !form.needsRealFolder || platform.isFolder(folder);
}

bool isForeign(const EngineContext& context, const Path& folder) {
    if (!context.layout().trash.checksOwner) {
        return false;
    }
    const std::optional<FileFacts> facts = resolvedFacts(context.platform(), folder);
    return facts && facts->owner != context.platform().userId();
}

TrashFolder trashAt(const TrashLayout& layout, const Path& folder, const Path& anchor) {
    return {
        .folder = folder, .contents = layout.contents.empty() ? folder : folder / layout.contents, .anchor = anchor};
}

TrashSource source(TrashFolder trash, std::string title, std::string description) {
    return {.title = std::move(title),
            .description = std::move(description),
            .url = trash.contents,
            .trash = std::move(trash)};
}

bool mayHoldTrash(const EngineContext& context, const Path& volume) {
    const Path path = context.platform().standardized(volume);
    if (path == "/" || path == context.layout().root) { // its Trash is the home's
        return false;
    }
    return volume.native().starts_with(context.layout().trash.volumePrefix);
}

void appendVolumeSources(const EngineContext& context, const Volume& volume, std::vector<TrashSource>& sources) {
    const Platform& platform = context.platform();
    const TrashLayout& layout = context.layout().trash;
    const std::string name = volume.name.empty() ? displayName(platform.standardized(volume.path)) : volume.name;
    for (const VolumeTrashForm& form : layout.volumeForms) {
        const Path folder = volume.path / form.folder;
        if (isAccepted(platform, form, folder)) {
            sources.push_back(source(trashAt(layout, folder, volume.path), L::tr("%@ 废纸篓", name),
                                     L::tr("%@ 卷宗中的废纸篓文件", name)));
        }
    }
}

/// Drops what names a Trash that an earlier source names: by path, then by the folder itself (a volume may be
/// mounted twice, or reached through a link).
void dropDuplicates(const Platform& platform, std::vector<TrashSource>& sources) {
    std::set<Path> paths;
    std::set<std::pair<std::uint64_t, std::uint64_t>> folders;
    std::erase_if(sources, [&](const TrashSource& candidate) {
        if (!paths.insert(platform.standardized(candidate.url)).second) {
            return true;
        }
        const std::optional<FileFacts> facts = resolvedFacts(platform, candidate.trash.folder);
        return facts && !folders.insert({facts->device, facts->inode}).second;
    });
}

/// Whether the contents only seem to be missing, because the Trash folder above them is closed.
bool hidesContents(const Platform& platform, const TrashFolder& trash) {
    const std::optional<FileFacts> facts = resolvedFacts(platform, trash.folder);
    if (!facts || !facts->isDirectory) {
        return false;
    }
    const auto listing = platform.entries(trash.folder);
    if (!listing) {
        return true;
    }
    const std::string name = trash.contents.filename().string();
    return std::ranges::any_of(*listing, [&](const FolderEntry& entry) { return entry.name == name; });
}

/// Everything in the Trash, hidden entries included; empty for a missing one; nothing when it cannot be read, or
/// is a link: a disk from elsewhere could offer the user's own folders as its Trash.
std::optional<std::vector<Path>> children(const EngineContext& context, const TrashSource& source) {
    const Platform& platform = context.platform();
    std::vector<Path> paths;
    if (!platform.exists(source.url)) {
        return hidesContents(platform, source.trash) ? std::nullopt : std::optional(paths);
    }
    if (const auto facts = platform.facts(source.url); facts && facts->isSymlink) {
        return std::nullopt;
    }
    const auto listing = platform.entries(source.url);
    if (!listing || isForeign(context, source.trash.folder)) {
        return std::nullopt;
    }
    for (const FolderEntry& entry : *listing) {
        paths.push_back(source.url / entry.name);
    }
    return paths;
}

std::string limitedDescription(const Platform& platform, const TrashSource& source) {
    if (const auto facts = platform.facts(source.url); facts && facts->isSymlink) {
        return L::tr("%@ 是一个链接，Vellmoor 不会跟随它。", source.url.string());
    }
    return L::tr("无法读取 %@。开启完全磁盘访问后可扫描废纸篓内容。", source.trash.folder.string());
}

/// The user's own Trash by name, those of other disks by where they are.
std::string keyOf(const SystemLayout& layout, const TrashSource& source) {
    const bool isHome = source.trash.folder == layout.trash.homeFolder;
    return isHome ? rowKey(CleanerModule::trash, "home") : percentEncoded(source.trash.folder.native());
}

CleanupItem contentsRow(EngineContext& context, const TrashSource& source, std::vector<Path> paths) {
    CleanupItem row = categoryItem(context, {.module = CleanerModule::trash,
                                             .key = keyOf(context.layout(), source),
                                             .title = source.title,
                                             .description = L::tr("%@，清理后会永久移除", source.description),
                                             .roots = std::move(paths),
                                             .symbol = "trash",
                                             .tint = Tint::red,
                                             .risk = CleanupRisk::safe,
                                             .cleanable = true,
                                             .selected = true,
                                             .splitting = Splitting::Never}); // half an item could not be put back
    for (CleanupTarget& target : row.targets.edit()) {
        target.origin = trashedOrigin(context, source.trash, target.url);
    }
    return row;
}

} // namespace

TrashFolder homeTrash(const TrashLayout& layout) {
    return trashAt(layout, layout.homeFolder, layout.homeFolder.parent_path());
}

std::optional<Path> trashedOrigin(const EngineContext& context, const TrashFolder& trash, const Path& place) {
    constexpr std::size_t longest = std::size_t{1} << 16;
    const TrashLayout& layout = context.layout().trash;
    if (layout.notes.empty()) {
        return std::nullopt;
    }
    const Path note = trash.folder / layout.notes / noteName(place.filename().string());
    const std::optional<std::string> text = context.platform().fileContents(note, longest);
    return text ? notedOrigin(*text, trash, trash.folder == layout.homeFolder) : std::nullopt;
}

std::vector<TrashSource> trashSources(const EngineContext& context) {
    const Platform& platform = context.platform();
    const TrashLayout& layout = context.layout().trash;
    const std::string home = displayPath(context.layout(), layout.homeFolder);
    std::vector<TrashSource> sources{
        source(homeTrash(layout), L::tr("用户废纸篓"), L::tr(layout.homeDescription, home))};
    for (const Volume& volume : platform.mountedVolumes()) {
        if (mayHoldTrash(context, volume.path)) {
            appendVolumeSources(context, volume, sources);
        }
    }
    dropDuplicates(platform, sources);
    std::erase_if(sources, [&](const TrashSource& candidate) {
        return isForeign(context, candidate.trash.folder) && platform.isReadable(candidate.trash.folder);
    });
    return sources;
}

std::vector<CleanupItem> trashItems(EngineContext& context) {
    std::vector<CleanupItem> rows;
    for (const TrashSource& source : trashSources(context)) {
        std::optional<std::vector<Path>> paths = children(context, source);
        if (!paths) {
            rows.push_back(accessLimitedRow(CleanerModule::trash, source.title,
                                            limitedDescription(context.platform(), source), source.trash.folder));
        } else if (!paths->empty()) {
            rows.push_back(contentsRow(context, source, std::move(*paths)));
        }
    }
    return rows;
}

} // namespace vellmoor
