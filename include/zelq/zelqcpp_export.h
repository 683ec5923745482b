// Export marker of the zelqcpp shared library.
//
// The library is built with hidden visibility; only functions marked
// ZELQCPP_API (its extern "C" factory functions) leave it. Everything else,
// internal classes and template instances included, stays private to it.
#ifndef ZELQ_ZELQCPP_EXPORT_H_
#define ZELQ_ZELQCPP_EXPORT_H_

#if defined(_WIN32)
#if defined(ZELQCPP_BUILDING)
#define ZELQCPP_API __declspec(dllexport)
#else
#define ZELQCPP_API __declspec(dllimport)
#endif
#else
#define ZELQCPP_API __attribute__((visibility("default")))
#endif

#endif  // ZELQ_ZELQCPP_EXPORT_H_
