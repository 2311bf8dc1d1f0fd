#pragma once

namespace bitlux {

/// Nobody reads the standard output any more, as behind `| head`. It ends a command and is no
/// failure; no std::exception, so that no handler takes it for one.
struct OutputClosed {};

/// The standard output could not be written, for the reason in errno. Raises OutputClosed, or
/// Failure (File).
[[noreturn]] void failOutput();

} // namespace bitlux
