#include "done/HistoryItems.h"

namespace vellmoor {

HistoryItems::HistoryItems(std::initializer_list<HistoryItem> items) {
    for (const HistoryItem& item : items) {
        push_back(item);
    }
}

void HistoryItems::push_back(const HistoryItem& item) {
    if (texts_.empty()) {
        texts_.push_back('\0');
    }
    const Held before = held_.empty() ? Held() : held_.back();
    Held held{.index = item.index,
              .bytes = item.bytes,
              .path = holdPath(item.path, before.path.folder, before.path.name),
              .fate = item.fate,
              .isPutBack = item.isPutBack};
    held.place = holdPath(item.place, before.place.folder, held.path.name);
    held.title = hold(item.title, before.title);
    held.reason = hold(item.reason, before.reason);
    held_.push_back(held);
}

HistoryItem HistoryItems::operator[](std::size_t number) const {
    const Held& held = held_[number];
    return {.index = held.index,
            .path = textOf(held.path),
            .title = std::string(textAt(held.title)),
            .bytes = held.bytes,
            .fate = held.fate,
            .place = textOf(held.place),
            .isPutBack = held.isPutBack,
            .reason = std::string(textAt(held.reason))};
}

std::string HistoryItems::textOf(const Path& path) const {
    return std::string(textAt(path.folder)).append(textAt(path.name));
}

HistoryItems::Place HistoryItems::hold(std::string_view text, Place other) {
    if (text.empty()) {
        return 0;
    }
    if (textAt(other) == text) {
        return other;
    }
    const Place place = texts_.size();
    texts_.append(text).push_back('\0');
    return place;
}

HistoryItems::Path HistoryItems::holdPath(std::string_view text, Place folder, Place name) {
    const std::size_t slash = text.rfind('/');
    const std::size_t split = slash == std::string_view::npos ? 0 : slash + 1;
    return {.folder = hold(text.substr(0, split), folder), .name = hold(text.substr(split), name)};
}

} // namespace vellmoor
