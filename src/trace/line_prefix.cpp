#include "trace/line_prefix.h"

#include "trace/settings_word.h"

namespace dialwright {
namespace {

constexpr std::size_t kMostNameBytes = 32;
constexpr std::size_t kMostLevelBytes = 16;

void PutTime(BoundedText& target, const LinePrefix& prefix) {
    if ((prefix.settings & TRACE_NO_TIME) != 0) return;
    target.Put(prefix.time.second->date.View());
    target.PutNumber(prefix.time.fraction, 7);
    target.Put(prefix.time.second->zone.View());
}

void PutIds(BoundedText& target, const LinePrefix& prefix) {
    const bool withProcess = (prefix.settings & TRACE_NO_PID) == 0;
    const bool withThread = (prefix.settings & TRACE_NO_TID) == 0;
    if (!withProcess && !withThread) return;
    target.Put('[');
    if (withProcess) target.PutNumber(prefix.processId);
    target.Put(':');
    if (withThread) target.PutNumber(prefix.threadId);
    target.Put("] ");
}

void PutTag(BoundedText& target, const LinePrefix& prefix) {
    if ((prefix.settings & kNoTagField) == kNoTagField) return;
    const bool withName = (prefix.settings & TRACE_NO_NAME) == 0 && !prefix.loggerName.empty();
    const bool withLevel = (prefix.settings & TRACE_NO_LEVEL) == 0;
    if (!withName && (!withLevel || prefix.levelText.empty())) return;
    target.Put('[');
    if (withName) {
        target.Put(prefix.loggerName.substr(0, kMostNameBytes));
        target.Put(' ');
    }
    if ((prefix.settings & TRACE_NO_LINE) == 0) {
        // The slot of the source's name is empty and still has its separator. Kept on purpose: two blanks stand
        // between the logger's name and the number.
        target.Put(' ');
        target.PutNumber(prefix.sourceLine);
        target.Put(' ');
    }
    if (withLevel) {
        target.Put(prefix.levelText.substr(0, kMostLevelBytes));
        target.Put(' ');
    }
    target.ReplaceLast(']');
    target.Put(' ');
}

}  // namespace

void PutPrefix(BoundedText& target, const LinePrefix& prefix) noexcept {
    PutTime(target, prefix);
    PutIds(target, prefix);
    PutTag(target, prefix);
}

}  // namespace dialwright
