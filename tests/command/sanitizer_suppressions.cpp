// What the sanitizers make of OpenImageIO and the libraries that it loads.

// The names are the sanitizers'.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __asan_default_options();

// A leak that is not ours: the PNG reader leaves its error text behind when libpng jumps out of it.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libOpenImageIO\n";
}

// LLVM 14 guesses where a loaded library's thread-local variables lie, sometimes wrongly, and its
// leak check at the end then falls over them.
extern "C" const char* __asan_default_options() {
    return "intercept_tls_get_addr=0";
}
// NOLINTEND(bugprone-reserved-identifier)
