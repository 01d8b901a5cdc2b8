// Leaks that are not ours: OpenImageIO's PNG reader leaves its error text behind when libpng jumps
// out of it.

// The name is the sanitizer's.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libOpenImageIO\n";
}
// NOLINTEND(bugprone-reserved-identifier)
