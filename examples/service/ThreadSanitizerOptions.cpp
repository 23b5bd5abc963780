// GLib and libsoup are not built for the thread sanitizer, which therefore does not see their locks and takes what
// happens inside of them for races. Our own code, and the locks of the standard library, it sees as ever.
extern "C" char const* __tsan_default_options(); // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)

extern "C" char const* __tsan_default_options() // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)
{
    return "ignore_noninstrumented_modules=1";
}
