/// \file
/// Marks what the dynamic library shows to its callers; everything else in it is hidden.
///
/// A caller that links the static library defines `GEOMETRY_STATIC` (the CMake package and pkg-config do it).
/// `GEOMETRY_BUILDING` is defined only while the library itself is compiled.
#pragma once

#ifdef __FAST_MATH__
#error "geometry needs doubles evaluated as written: compile without -ffast-math (and -Ofast)"
#endif

#if defined(GEOMETRY_STATIC)
#define GEOMETRY_EXPORT
#elif defined(_WIN32)
#ifdef GEOMETRY_BUILDING
#define GEOMETRY_EXPORT __declspec(dllexport)
#else
#define GEOMETRY_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define GEOMETRY_EXPORT __attribute__((visibility("default")))
#else
#define GEOMETRY_EXPORT
#endif
