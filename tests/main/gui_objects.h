/* Counts of the process's GDI and USER objects, for tests that show that nothing leaks. */
#pragma once

namespace tavix_test {

/* GDI objects of this process. Negative if unknown. */
int CountGdiObjects();
inline long GdiObjectCount() { return CountGdiObjects(); }
/* Windows and menus of this process. */
int CountUserObjects();

}  // namespace tavix_test
