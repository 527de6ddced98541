#pragma once

/// Stands at what a shared library of this project offers to programs; everything else stays inside. A static library offers nothing of it on from the program or library that it becomes part of.
#ifdef TOLVGRAPHING_STATIC
#define TOLV_EXPORT
#else
#define TOLV_EXPORT [[gnu::visibility("default")]]
#endif
