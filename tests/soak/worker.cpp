#include "worker.h"

#include <mutex>
#include <sstream>
#include <stdexcept>

#include "platform/text_encoding.h"

namespace dialwright::testing {
namespace {

constexpr int kCheckAllEvery = 50;

const wchar_t* ClassOf(bool isDialog) { return isDialog ? kDialogClass : kPlainClass; }

}  // namespace

Library::Library() {
    if (!DialwrightLoad(&library, nullptr, nullptr, 0)) throw std::runtime_error("the DLL cannot be loaded");
}

Worker::Worker(bool isDialog, std::uint64_t itsSeed)
    : seed(itsSeed),
      target(ClassOf(isDialog), {L"--refuse-close"}),
      fixture(ReadFixture(target.Handle(), ClassOf(isDialog), target.Title())),
      commands(fixture, seed) {}

void Worker::Run(SoakRun& run, int count) {
    thread = ::GetCurrentThreadId();
    for (int i = 0; i < count && !run.failed; ++i) {
        const RandomCommand command = commands.Next();
        lastLines += "\n" + ToUtf8(command.line);
        const std::string wrong = FaultOf(command, run);
        ++done;
        if (wrong.empty()) continue;
        run.failed = true;
        fault = "command " + std::to_string(done) + ": " + wrong + LastWords();
    }
}

std::string Worker::FaultOf(const RandomCommand& command, SoakRun& run) {
    if (command.movesFocus) {
        const std::unique_lock alone(run.focus);
        if (std::string wrong = FaultOfResult(command, run.library); !wrong.empty()) return wrong;
        // What one window does when it loses the focus or gets it can move it once more.
        for (int round = 0; round < 2; ++round) {
            for (const auto& worker : run.workers) worker->Settle();
        }
        return FaultOfFixture(command);
    }
    // One that fails waits for its time to pass, and nobody shall wait with it.
    std::string wrong = command.result == 0 ? FaultOfResult(command, run.library) : "";
    const std::shared_lock lock(run.focus);
    if (command.result != 0) wrong = FaultOfResult(command, run.library);
    return wrong.empty() ? FaultOfFixture(command) : wrong;
}

std::string Worker::FaultOfResult(const RandomCommand& command, const Library& library) const {
    const int result = library.Execute(command.line);
    return result == command.result ? "" : "the result is " + std::to_string(result);
}

std::string Worker::FaultOfFixture(const RandomCommand& command) {
    // A click that is posted must be handled before the next one is sent.
    if (command.clicks) Settle();
    Model& model = commands.Expected();
    std::string wrong = command.control ? model.FaultOf(*command.control) : model.FaultOfWindow();
    if (!wrong.empty() || (done + 1) % kCheckAllEvery != 0) return wrong;
    wrong = model.FaultOfAll();
    events = target.TakeAllEvents();
    if (wrong.empty()) wrong = model.FaultOfMessages(events);
    if (wrong.empty()) lastLines.clear();
    return wrong;
}

TargetFigures Worker::FiguresOfTarget() {
    (void)target.TakeAllEvents();
    target.Do(L"figures");
    std::istringstream line(target.TakeAllEvents().front());
    std::string word;
    TargetFigures figures;
    line >> word >> figures.threads >> figures.handles >> figures.privateKiB >> figures.guiObjects;
    return figures;
}

std::string Worker::LastWords() {
    std::string words = lastLines;
    for (const std::string& event : target.TakeAllEvents()) events.push_back(event);
    for (const std::string& event : events) words += "\n    " + event;
    return words;
}

}  // namespace dialwright::testing
