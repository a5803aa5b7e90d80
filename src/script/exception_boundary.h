#pragma once

#include <exception>

#include "trace/trace.h"

namespace dialwright {

/// Runs the body; a standard exception becomes an error line and 0. There is no catch-all on purpose: what does
/// not derive from the standard exception class leaves the exported function.
template <class Body>
int WithExceptionBoundary(const char* tag, const char* activity, Body&& body) {
    try {
        return body();
    } catch (const std::exception& error) {
        TraceLog(tag, LOG_ERROR, "Exception during %s: %s", activity, error.what());
        return 0;
    }
}

}  // namespace dialwright
