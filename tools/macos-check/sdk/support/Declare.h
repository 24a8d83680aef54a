#pragma once

// How these declarations say what Apple's headers say with macros of their own. A mark of availability stands where an
// API is younger than the oldest system that MORLA runs on (macOS 13.0), or deprecated; the others could not matter.

#ifdef __cplusplus
#define DECLARE_EXTERN extern "C"
#else
#define DECLARE_EXTERN extern
#endif

#define DECLARE_ENUM(type, name) \
  enum name : type name;         \
  enum name : type
// In C++ a set of options is its integer type, and its members are not of an enumeration's type.
#define DECLARE_OPTIONS(type, name) \
  type name;                        \
  enum : type

#define AVAILABLE_FROM(version) __attribute__((availability(macos, introduced = version)))
#define DEPRECATED_SINCE(version, text) __attribute__((availability(macos, deprecated = version, message = text)))

#define BRIDGED_TO(type) __attribute__((objc_bridge(type)))
#define RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define MUST_USE_RESULT __attribute__((warn_unused_result))
#define RETURNS_RETAINED_CF __attribute__((cf_returns_retained))
#define RETURNS_RETAINED_OBJECT __attribute__((ns_returns_retained))
