#pragma once

// What the probe exports beside the five: it is the library with a door to its inside, for tests alone.

namespace dialwright::testing {

using ProbeLogExport = void (*)(int thread, int line);
using ProbeSettingsExport = void (*)(const char* keyPath);

inline constexpr const wchar_t* kProbeName = L"DialwrightProbe.dll";

}  // namespace dialwright::testing
