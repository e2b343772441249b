/* Counts of the process's GDI and USER objects, for tests that show that nothing leaks. */
#pragma once

namespace tavix_test {

/* GDI objects of all processes that share a handle table with this one. Negative if unknown. */
int CountGdiObjects();
inline long GdiObjectCount() { return CountGdiObjects(); }
/* Windows and menus that exist. */
int CountUserObjects();

}  // namespace tavix_test
