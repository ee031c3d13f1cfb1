#pragma once
#include <cstdint>
#include <string_view>

namespace quorvel {

/// FNV-1a of a text, 64 bits: the same in every build, so that files may keep it.
/// @param h of what stands before it, when a text comes in parts
[[nodiscard]] constexpr std::uint64_t fnv1a(std::string_view texto,
                                            std::uint64_t h = 14695981039346656037ULL) {
    for (const char c : texto) h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    return h;
}

} // namespace quorvel
