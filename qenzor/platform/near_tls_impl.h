#pragma once

/// Stands before a thread-local variable that is asked for once per object: the variable lies at a
/// fixed distance from the thread's pointer, where it is had without a call. Room for such ones is
/// scarce in a library that a program may load while it runs, so they are few and small.
#ifdef __GNUC__
#define QENZOR_NEAR_TLS [[gnu::tls_model("initial-exec")]]
#else
#define QENZOR_NEAR_TLS
#endif
