#pragma once
#include <functional>

namespace quorvel {

/// Told now and then how much of a long piece of work is done. @param total 0 while nobody knows it
/// @return false ends the work
using Avance = std::function<bool(long hechas, long total)>;

} // namespace quorvel
