#pragma once

#include "base/notification_center.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "platform/file_system.h"
#include "platform/id_source.h"
#include "platform/main_loop.h"
#include "platform/serial_queue.h"
#include "platform/settings.h"

namespace tessary {

/// What every store needs. All of it outlives the stores.
struct StoreServices {
    FileSystem& files;
    MainLoop& loop;
    Clock& clock;
    const LocalCalendar& calendar;
    IdSource& ids;
    Settings& settings;
    Console& console;
    NotificationCenter& notifications;
};

/// What a store may do with its files.
enum class StoreAccess {
    readOnly,   ///< another program holds the library: nothing is ever written
    readWrite,  ///< this program holds the library's lock
};

}  // namespace tessary
