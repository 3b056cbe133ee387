#pragma once

namespace tessary {

/// What the companion can do. Whoever wants it to react asks with one of these; how it moves is the companion's own.
enum class PlimReaction { idle, wave, cur, think, study, win, fail, sleep };

}  // namespace tessary
