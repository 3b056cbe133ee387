#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/date.h"
#include "base/uuid.h"

namespace tessary {

/// A dated test of one notebook.
struct Exam {
    ExamId id;
    NotebookId notebookID;
    std::string title;
    Date date;                                    ///< day and time
    std::optional<std::vector<PageId>> pageIDs;   ///< absent: the whole notebook
    std::optional<std::string> calendarEventID;   ///< the calendar event it came from or was written to
    Date createdAt;

    friend bool operator==(const Exam&, const Exam&) = default;
};

}  // namespace tessary
