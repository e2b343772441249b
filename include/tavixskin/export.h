/* How the exported C++ classes are declared. */
#pragma once

// A host sees imports; the library, its tests and a static build see plain exports.
#if defined(TAVIX_BUILDING_LIBRARY)
#define TAVIX_API __declspec(dllexport)
#else
#define TAVIX_API __declspec(dllimport)
#endif
