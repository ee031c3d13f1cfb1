#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace quorvel {

/// SHA-256 of what comes in parts.
class Sha256 {
public:
    Sha256();
    void add(std::string_view bytes);
    /// Of all that was added, in hexadecimal digits; ends the sum.
    [[nodiscard]] std::string hex();

private:
    std::unique_ptr<void, void (*)(void*)> state_;
};
[[nodiscard]] std::string sha256(std::string_view bytes);
/// @throws std::runtime_error naming the file that cannot be read
[[nodiscard]] std::string sha256_of_file(const std::filesystem::path& file);

} // namespace quorvel
