#pragma once

#include <string>

#include "platform/windows.h"
#include "verify/setting.h"

#include <dialwright/dialwright_loader.h>

namespace dialwright::verify {

/// The library, loaded for as long as this object lives. Throws std::runtime_error with the loader's reason.
class Library {
public:
    explicit Library(const Setting& setting);
    ~Library() { ::DialwrightFree(&functions); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] const DialwrightLibrary* operator->() const { return &functions; }

private:
    DialwrightLibrary functions{};
};

/// What a call returned, and how long it took.
struct TimedCall {
    int result = 0;
    double milliseconds = 0;
};

[[nodiscard]] TimedCall Execute(const Library& library, const std::wstring& line);

/// "result 1 after 12 ms".
[[nodiscard]] std::string Shown(const TimedCall& call);

}  // namespace dialwright::verify
