// How fast the trace takes lines.

#include <mutex>

#include "line_benchmark.h"
#include "trace/line_writer.h"
#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/trace_files.h"

using namespace dialwright;

namespace {

void Write(int index) {
    TraceLine(nullptr, 0, bench::kSourceLine, "   info",
              "Window.SetText: control %d of \"%s\" has its new text, 3 of 5000 ms are used up", bench::Control(index),
              bench::kWindowName);
}

void Flush() {
    const std::lock_guard lock(Logger().lock);
    TraceFlush(Logger());
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments = bench::ReadLineArguments(count, values, "bench_trace_line");
    if (TraceStart(arguments.Text("--folder").c_str(), "trace.log", bench::kLoggerName) == 0) return 1;
    bench::RunLineBenchmark(arguments, [](int index) { Write(index); }, [] { Flush(); });
    TraceStop();
    return 0;
}
