#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fixture.h"

namespace dialwright::testing {

/// How often a message must have been received. Some commands fail by their timeout, and may have made their attempt
/// or not.
struct MessageCount {
    int surely = 0;
    int perhaps = 0;
};

/// What a fixture must hold by the commands that were carried out on it.
class Model {
public:
    explicit Model(const Fixture& shown);

    void Type(std::size_t control, const std::wstring& text);
    void Clear(std::size_t control);
    void Click(std::size_t control);
    /// The state of a check box, the item of a dropdown. That of a radio button changes no other one: only a click
    /// does.
    void SetState(std::size_t control, int state);
    void Move(const Rectangle& to) { place = to; }
    void Minimize() { minimized = true; }
    void Maximize();
    /// A minimized window comes back as it was, so that a maximized one is so again.
    void Restore();
    void BringToFront() { minimized = false; }

    /// Messages that are received, as the practice target prints them, without their arguments.
    void Expect(const std::string& message, int count = 1) { expected[message].surely += count; }
    void ExpectPerhaps(const std::string& message) { ++expected[message].perhaps; }

    /// Text can be typed into an empty edit alone: in any other one the caret is where the last click or the return of
    /// the focus has put it.
    [[nodiscard]] bool IsEmpty(std::size_t control) const { return texts[control] == L""; }
    /// Neither minimized nor maximized: the controls are where the fixture says.
    [[nodiscard]] bool IsNormal() const { return !minimized && !maximized; }

    /// What is wrong with the control; empty where all is right.
    [[nodiscard]] std::string FaultOf(std::size_t index) const;
    [[nodiscard]] std::string FaultOfWindow() const;
    [[nodiscard]] std::string FaultOfAll() const;
    /// The same of the messages since the last call, all of which must have been handled by now.
    [[nodiscard]] std::string FaultOfMessages(const std::vector<std::string>& events);

private:
    void ClearRadiosBut(std::size_t control);

    const Fixture& fixture;
    /// Nothing before its first command: the target has put a text there.
    std::vector<std::optional<std::wstring>> texts;
    /// The state of a check box or radio button, the item of a dropdown.
    std::vector<int> states;
    Rectangle place;
    bool minimized = false;
    /// Of a minimized window: when it comes back.
    bool maximized = false;
    std::map<std::string, MessageCount> expected;
};

}  // namespace dialwright::testing
