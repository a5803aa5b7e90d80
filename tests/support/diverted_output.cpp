#include "support/diverted_output.h"

#include <cstdio>

#include <io.h>

namespace dialwright::testing {
namespace {

constexpr int kStandardOutput = 1;
constexpr int kNone = -1;

}  // namespace

DivertedOutput::DivertedOutput(int descriptor) : saved(::_dup(kStandardOutput)) {
    std::fflush(stdout);
    if (descriptor < 0) {
        ::_close(kStandardOutput);
    } else {
        ::_dup2(descriptor, kStandardOutput);
    }
}

DivertedOutput::~DivertedOutput() { GiveBack(); }

void DivertedOutput::GiveBack() {
    if (saved == kNone) return;
    std::fflush(stdout);
    ::_dup2(saved, kStandardOutput);
    ::_close(saved);
    saved = kNone;
    // Of what stood in its place.
    std::clearerr(stdout);
}

}  // namespace dialwright::testing
