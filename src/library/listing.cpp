#include "library/listing.h"

namespace tessary {

std::string_view sectionTitle(NavSection section) {
    switch (section) {
        case NavSection::today: return "Today";
        case NavSection::journal: return "All Notes";
        case NavSection::archive: return "Archive";
        case NavSection::favorites: return "Favorites";
    }
    return {};
}

}  // namespace tessary
