// Says which build of the library a file is. No code reads it; people read it with `strings libckscribe.so |
// grep '^ckscribe '`.

namespace {

// Without these attributes compiler and linker leave the text out.
#if __has_cpp_attribute(gnu::retain)
[[gnu::used, gnu::retain]]
#else
[[gnu::used]]
#endif
constexpr char kIdentity[] = "ckscribe " CKSCRIBE_VERSION " (commit " CKSCRIBE_COMMIT ")";

}  // namespace
