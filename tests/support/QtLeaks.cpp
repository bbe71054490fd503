// Linked into test programs that draw: Qt's own globals and caches are never given back, which is no leak of ours.

// LeakSanitizer asks for this function by this name.
extern "C" int __lsan_is_turned_off() { // NOLINT(bugprone-reserved-identifier)
    return 1;
}
