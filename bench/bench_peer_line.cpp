// How fast a logger that many programs use takes the same lines.

#include <memory>

#include "line_benchmark.h"

#include <spdlog/logger.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>

using namespace dialwright;

namespace {

constexpr std::size_t kMostBytes = 512U << 20U;
constexpr std::size_t kFiles = 2;
// The fields of our prefix. The fraction has six digits, as the peer's clock counts no finer; ours has seven.
constexpr const char* kPattern = "[%Y-%m-%d %H:%M:%S.%f UTC%z] [%P:%t] [%n  %# %7l] %v";

std::shared_ptr<spdlog::logger> MakeLogger(const std::string& folder) {
    auto sink = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(folder + "peer.log", kMostBytes, kFiles);
    auto logger = std::make_shared<spdlog::logger>(bench::kLoggerName, std::move(sink));
    logger->set_formatter(
        std::make_unique<spdlog::pattern_formatter>(kPattern, spdlog::pattern_time_type::local, "\r\n"));
    return logger;
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments = bench::ReadLineArguments(count, values, "bench_peer_line");
    const std::shared_ptr<spdlog::logger> logger = MakeLogger(arguments.Text("--folder"));
    const auto write = [&](int index) {
        logger->log(spdlog::source_loc{"", bench::kSourceLine, ""}, spdlog::level::info,
                    "Window.SetText: control {} of \"{}\" has its new text, 3 of 5000 ms are used up",
                    bench::Control(index), bench::kWindowName);
    };
    bench::RunLineBenchmark(arguments, write, [&] { logger->flush(); });
    return 0;
}
