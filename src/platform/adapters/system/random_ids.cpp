#include "platform/adapters/system/random_ids.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace tessary {

Uuid RandomIds::next() {
    std::array<std::uint8_t, 16> random{};
    while (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "random bytes");
    }
    return Uuid::fromRandomBytes(random);
}

}  // namespace tessary
