#pragma once

namespace bitlux {

/// The reader of the standard output is gone, as after `| head`. This ends a command and is no
/// failure; it is no std::exception, so that no handler takes it for one.
struct OutputClosed {};

/// The standard output could not be written, for the reason in errno. Raises OutputClosed, or
/// Failure (File).
[[noreturn]] void failOutput();

} // namespace bitlux
