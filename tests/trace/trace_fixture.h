#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/temporary_folder.h"
#include "trace/logger.h"

namespace dialwright {

/// A logger "Dialwright" that writes x_1.log and so on into a folder of its own. Standard output is kept quiet.
class TraceFixture : public ::testing::Test {
protected:
    void TearDown() override {
        TraceStop();
        ReleaseTrace();
    }

    void Start() { ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "x.log", "Dialwright")); }

    void StopAndRelease() {
        TraceStop();
        ReleaseTrace();
    }

    [[nodiscard]] std::wstring File(const std::wstring& name) const { return folder.File(name); }

    /// The messages of the main file, without the set-up header and without "trace stopped".
    [[nodiscard]] std::vector<std::string> MessagesOfMainFile() const {
        std::vector<std::string> messages = testing::ReadMessages(File(L"x_1.log"));
        std::erase_if(messages, [](const std::string& message) {
            return message.starts_with("(Time Zone: ") || message == "trace stopped";
        });
        return messages;
    }

    const testing::TemporaryFolder folder;
    const testing::LogCapture log;
};

}  // namespace dialwright
