#include "verify/library.h"

#include <array>
#include <chrono>
#include <stdexcept>

#include "platform/text_encoding.h"

namespace dialwright::verify {

Library::Library(const Setting& setting) {
    std::array<wchar_t, DIALWRIGHT_LOADER_MESSAGE_UNITS> why{};
    if (::DialwrightLoad(&functions, setting.Library().c_str(), why.data(), why.size()) == 0)
        throw std::runtime_error(ToUtf8(why.data()));
}

TimedCall Execute(const Library& library, const std::wstring& line) {
    const auto begin = std::chrono::steady_clock::now();
    const int result = library->executeCommand(line.c_str());
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
    return {.result = result, .milliseconds = spent.count()};
}

std::string Shown(const TimedCall& call) {
    return "result " + std::to_string(call.result) + " after " +
           std::to_string(static_cast<long long>(call.milliseconds)) + " ms";
}

}  // namespace dialwright::verify
