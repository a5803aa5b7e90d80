#pragma once

#include <exception>

#include "platform/windows.h"

namespace dialwright {

/// A callback's context together with what carries an exception past the platform's frames: no exception may
/// unwind through the platform, which would lose its own window list at every throw.
template <class Context>
struct GuardedContext : Context {
    std::exception_ptr error;

    void RethrowError() const {
        if (error) std::rethrow_exception(error);
    }
};

/// Runs the body of an enumeration callback whose LPARAM is the address of a GuardedContext<Context>. Returns the
/// body's wish to go on; FALSE once a body has thrown, here or in an enumeration within this one.
template <class Context, class Visit>
BOOL VisitGuarded(LPARAM parameter, Visit&& visit) noexcept {
    auto& guarded = *static_cast<GuardedContext<Context>*>(reinterpret_cast<Context*>(parameter));
    if (guarded.error) return FALSE;
    try {
        return visit(static_cast<Context&>(guarded)) ? TRUE : FALSE;
    } catch (...) {
        guarded.error = std::current_exception();
        return FALSE;
    }
}

/// What a callback's LPARAM must be.
template <class Context>
LPARAM CallbackParameter(GuardedContext<Context>& guarded) {
    return reinterpret_cast<LPARAM>(static_cast<Context*>(&guarded));
}

}  // namespace dialwright
