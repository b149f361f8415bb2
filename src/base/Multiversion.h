#pragma once

/// Before a function with plain loops: it is compiled for several generations of the processor, and the best that the
/// machine has is taken at run time. Elsewhere, and where a sanitizer must see every call, nothing.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define QUILLARY_MULTIVERSION __attribute__((target_clones("arch=x86-64-v3", "default")))
#else
#define QUILLARY_MULTIVERSION
#endif
