#include "script/check_state.h"

#include "trace/trace.h"

namespace dialwright {

bool IsCheckboxState(int state, const char* tag) {
    if (state == 0 || state == kChecked) return true;
    TraceLog(tag, LOG_ERROR, "Invalid checkbox state: %d", state);
    return false;
}

}  // namespace dialwright
