#pragma once

/// Marks a function with a loop worth the widest vectors that the machine has: it is compiled for several of them, and
/// the right one is chosen when the program starts. Elsewhere the function is compiled once, for any machine.
#if defined(__x86_64__) && defined(__ELF__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__)
#define VELDRA_WIDE_VECTORS [[gnu::target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")]]
#else
#define VELDRA_WIDE_VECTORS
#endif
