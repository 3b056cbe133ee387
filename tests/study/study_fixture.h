#pragma once

#include <gtest/gtest.h>

#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/ini/ini_settings.h"
#include "study/review_log.h"
#include "support/fakes.h"
#include "support/memory_file_system.h"
#include "support/virtual_loop.h"

namespace tessary {

/// What the stores of a test stand on: files in memory, virtual time, a zone with daylight saving.
class StudyTest : public testing::Test {
protected:
    explicit StudyTest(Date now) : clock_(now) {}

    MemoryFileSystem files_;
    VirtualLoop loop_;
    ManualClock clock_;
    IcuCalendar calendar_{"Europe/Berlin"};
    SequentialIds ids_;
    IniSettings settings_{files_, "/settings.ini"};
    RecordingConsole console_;
    NotificationCenter notifications_;
    StoreServices services_{files_, loop_, clock_, calendar_, ids_, settings_, console_, notifications_};
    InlineQueue queue_;
    ReviewLog log_{"/library/Reviews", services_, queue_};
};

}  // namespace tessary
