"""A system of a test's own making in place of this machine's: what the kernel tells of it, and nothing installed."""

import pathlib

GIB = 1 << 20  # in the kernel's kB
# Enough file caches that releasing them is offered, whatever this machine has cached.
MEMORY = {"MemTotal": 16 * GIB, "MemFree": 2 * GIB, "MemAvailable": 11 * GIB, "Buffers": GIB // 4, "Cached": 9 * GIB,
          "Active": 5 * GIB, "Inactive": 8 * GIB, "Active(anon)": 2 * GIB, "Inactive(anon)": GIB,
          "Active(file)": 3 * GIB, "Inactive(file)": 6 * GIB, "Unevictable": 0, "Slab": GIB // 2,
          "KReclaimable": GIB // 4, "SReclaimable": GIB // 4, "SUnreclaim": GIB // 4, "KernelStack": GIB // 64,
          "PageTables": GIB // 32, "SwapTotal": 0, "SwapFree": 0}


class System:
    def __init__(self, folder, **memory):
        """`memory`: what the kernel tells otherwise, in kB."""
        self.folder = pathlib.Path(folder)
        told = MEMORY | memory
        self.text("proc/meminfo", "".join(f"{name}: {kilobytes:>12} kB\n" for name, kilobytes in told.items()))

    def text(self, relative, contents):
        path = self.folder / relative
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(contents, encoding="utf-8")
        return path
