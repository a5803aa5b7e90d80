// Calls the exports of Dialwright.dll, loaded as a host loads it, with texts of all kinds. The process must live on,
// every result must be right, and two exports that judge the same text must agree.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dialwright/dialwright_loader.h>

#include "language/by_hand.h"
#include "lines.h"

namespace dialwright::fuzz {
namespace {

struct Options {
    std::uint32_t seed = 1;
    std::uint64_t executions = 0;
    unsigned seconds = 0;
};

std::string Visible(const std::wstring& text) {
    std::string visible;
    for (const wchar_t unit : text) {
        char buffer[8];
        const bool isPlain = unit >= L' ' && unit <= L'~' && unit != L'\\';
        std::snprintf(buffer, sizeof buffer, isPlain ? "%c" : "\\u%04x", static_cast<unsigned>(unit));
        visible += buffer;
    }
    return visible;
}

class Driver {
public:
    Driver(const DialwrightLibrary& loaded, std::uint32_t seed) : library(loaded), lines(seed) {}

    /// Some calls. False, with a line on standard error, where something does not hold.
    [[nodiscard]] bool Try() {
        switch (lines.Below(16)) {
            case 0: return Launch();
            case 1: return Execute();
            case 2:
            case 3: return Validate(lines.Junk());
            case 4:
            case 5:
            case 6:
            case 7: return ValidateWhole(lines.Script());
            default: return Validate(lines.Changed());
        }
    }

    [[nodiscard]] std::uint64_t Executions() const { return executions; }

private:
    bool Want(int result, bool expected, const char* call, const std::wstring& text) {
        ++executions;
        if (result == (expected ? 1 : 0)) return true;
        std::fprintf(stderr, "does not hold: %s gives %d, wanted is %d, in call %llu for: %s\n", call, result,
                     expected ? 1 : 0, static_cast<unsigned long long>(executions), Visible(text).c_str());
        return false;
    }

    bool ValidateWhole(const std::wstring& script) {
        return Want(library.validateScript(script.c_str()), testing::IsValidScriptByHand(script), "ValidateScript",
                    script);
    }

    bool Validate(const std::wstring& line) {
        const bool isValid = testing::IsValidByHand(line);
        if (!Want(library.validateCommand(line.c_str()), isValid, "ValidateCommand", line)) return false;
        if (!ValidateWhole(line)) return false;
        return isValid || Want(library.executeCommand(line.c_str()), false, "ExecuteCommand", line);
    }

    /// Lines that fail: for a number that is none; seldom, as it takes its time, for a window that is not there.
    bool Execute() {
        const std::wstring line = lines.OneIn(400) ? lines.Right() : lines.Unreadable();
        const std::wstring script = line + L"\n" + lines.Script();
        return Want(library.executeCommand(line.c_str()), false, "ExecuteCommand", line) &&
               Want(library.executeScript(script.c_str()), false, "ExecuteScript", script);
    }

    bool Launch() {
        const std::wstring program = lines.NoProgram();
        unsigned long id = 4711;
        const bool isKept =
            Want(library.programLaunch(program.c_str(), lines.Junk().c_str(), &id), false, "ProgramLaunch", program);
        return isKept && Want(id == 4711 ? 1 : 0, true, "the process ID of no process", program);
    }

    const DialwrightLibrary& library;
    Lines lines;
    std::uint64_t executions = 0;
};

bool Read(int count, char** values, Options& options) {
    for (int i = 1; i < count; i += 2) {
        char* end = nullptr;
        const unsigned long long number = i + 1 < count ? std::strtoull(values[i + 1], &end, 10) : 0;
        if (end == nullptr || *end != '\0') return false;
        if (std::strcmp(values[i], "--seed") == 0) {
            options.seed = static_cast<std::uint32_t>(number);
        } else if (std::strcmp(values[i], "--executions") == 0) {
            options.executions = number;
        } else if (std::strcmp(values[i], "--seconds") == 0) {
            options.seconds = static_cast<unsigned>(number);
        } else {
            return false;
        }
    }
    return options.executions != 0 || options.seconds != 0;
}

/// Reports as the native fuzzers do.
int Run(const DialwrightLibrary& library, const Options& options) {
    using Clock = std::chrono::steady_clock;
    Driver driver(library, options.seed);
    const auto begin = Clock::now();
    const auto mayGoOn = [&] {
        const bool inTime = options.seconds == 0 || Clock::now() - begin < std::chrono::seconds(options.seconds);
        return inTime && (options.executions == 0 || driver.Executions() < options.executions);
    };
    bool holds = true;
    while (holds && mayGoOn()) holds = driver.Try();
    const auto seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    const double each = static_cast<double>(driver.Executions()) / seconds;
    std::fprintf(stderr, "seed: %lu\nstat::number_of_executed_units: %llu\nstat::average_exec_per_sec: %.0f\n",
                 static_cast<unsigned long>(options.seed), static_cast<unsigned long long>(driver.Executions()), each);
    return holds ? 0 : 1;
}

}  // namespace
}  // namespace dialwright::fuzz

int main(int count, char** values) {
    dialwright::fuzz::Options options;
    const bool wantsHelp = count == 2 && std::strcmp(values[1], "--help") == 0;
    if (wantsHelp || !dialwright::fuzz::Read(count, values, options)) {
        std::fprintf(stderr,
                     "usage: fuzz_exports [--seed N] --seconds N | --executions N\n"
                     "Exit codes: 0 all held, 1 something did not, 2 usage.\n");
        return wantsHelp ? 0 : 2;
    }
    // The library's copies of its messages go nowhere.
    std::fclose(stdout);
    std::fprintf(stderr, "seed: %lu\n", static_cast<unsigned long>(options.seed));
    DialwrightLibrary library;
    wchar_t why[DIALWRIGHT_LOADER_MESSAGE_UNITS];
    if (DialwrightLoad(&library, nullptr, why, DIALWRIGHT_LOADER_MESSAGE_UNITS) == 0) {
        std::fprintf(stderr, "%ls\n", why);
        return 1;
    }
    const int result = dialwright::fuzz::Run(library, options);
    DialwrightFree(&library);
    return result;
}
