#pragma once
// FPLC_API marks the declarations that form the library's interface. The library
// is compiled with hidden visibility, so a shared build exports these and nothing
// else, and a static one linked into an embedder's shared object adds no other
// names to it.
#if defined(__GNUC__)
#define FPLC_API __attribute__((visibility("default")))
#else
#define FPLC_API
#endif
