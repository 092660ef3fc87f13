// Marks what hosts and the shared library's own clients may link against; everything else stays
// hidden.
#pragma once

#if defined(_WIN32)
#define NR_API
#else
#define NR_API __attribute__((visibility("default")))
#endif
