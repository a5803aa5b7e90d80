// What a message on standard output costs when that is a regular file, and what the bare write of its bytes costs.

#include <cstdio>
#include <mutex>
#include <string>

#include "arguments.h"
#include "measuring.h"
#include "platform/windows.h"
#include "redirected_output.h"
#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace/trace_files.h"

using namespace dialwright;

namespace {

constexpr int kWarmUpMessages = 1000;
// What Log writes for one message; standard output is in text mode.
constexpr std::string_view kBytes =
    "Window::SetText: control 100000 of \"Sign in\" has its new text, 3 of 5000 ms are used up\r\n";

void Log(int index) {
    TraceLog("Window::SetText", LOG_INFO, "control %d of \"%s\" has its new text, 3 of 5000 ms are used up",
             100'000 + index, "Sign in");
}

double SecondsToLog(int messages) {
    for (int i = 0; i < kWarmUpMessages; ++i) Log(i);
    const bench::Stopwatch watch;
    for (int i = 0; i < messages; ++i) Log(i);
    if (Logger().started) {
        const std::lock_guard lock(Logger().lock);
        TraceFlush(Logger());
    }
    return watch.Seconds();
}

bool WriteBytes(HANDLE file) {
    DWORD written = 0;
    return ::WriteFile(file, kBytes.data(), static_cast<DWORD>(kBytes.size()), &written, nullptr) &&
           written == kBytes.size();
}

/// Below zero when a write failed.
double SecondsToWrite(const std::string& path, int messages) {
    const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    bool sound = true;
    for (int i = 0; i < kWarmUpMessages; ++i) sound = WriteBytes(file) && sound;
    const bench::Stopwatch watch;
    for (int i = 0; i < messages; ++i) sound = WriteBytes(file) && sound;
    const double seconds = watch.Seconds();
    ::CloseHandle(file);
    return sound ? seconds : -1;
}

double Measure(const bench::Arguments& arguments) {
    const std::string way = arguments.Text("--way");
    const std::string folder = arguments.Text("--folder");
    const std::string output = folder + "output.txt";
    const int messages = arguments.Number("--messages");
    if (way == "bare") return SecondsToWrite(output, messages);
    if (way != "trace" && way != "no-trace") arguments.Refuse("--way wants trace, no-trace or bare");
    if (way == "trace" && TraceStart(folder.c_str(), "trace.log", "Dialwright") == 0) return -1;
    const bench::RedirectedOutput redirected(output);
    const double seconds = redirected.IsThere() ? SecondsToLog(messages) : -1;
    TraceStop();
    return seconds;
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_trace_log --way trace|no-trace|bare --messages N --folder FOLDER\n\n"
        "Logs messages to output.txt in the folder, whose name ends in a backslash, with the trace running or not, or\n"
        "writes the bytes of such messages, and prints one line of JSON.\n",
        {"--way", "--messages", "--folder"});
    const double seconds = Measure(arguments);
    if (seconds < 0) return 1;
    const int messages = arguments.Number("--messages");
    std::printf("{\"messages\": %d, \"written\": %d, \"seconds\": %.9f}\n", messages, messages + kWarmUpMessages,
                seconds);
    return 0;
}
