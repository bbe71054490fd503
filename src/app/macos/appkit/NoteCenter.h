#pragma once

#include <functional>
#include <string>

namespace vellmoor {

/// The system's notification centre: one note at a time. Main thread only, one object at a time. Outside a bundle,
/// which the system knows no program by, and where the user wants none, no note is shown; what the system refuses is
/// logged.
class NoteCenter {
public:
    NoteCenter() = default;
    ~NoteCenter();
    NoteCenter(const NoteCenter&) = delete;
    NoteCenter& operator=(const NoteCenter&) = delete;

    /// `opened` is called on the main thread when the user clicks a note, also one of an earlier run. Before the
    /// application has finished launching, or such a click is lost.
    void install(std::function<void()> opened);
    /// Shows a note in place of the one before. With the first one of all, the system asks the user.
    void show(const std::string& title, const std::string& text);
};

} // namespace vellmoor
