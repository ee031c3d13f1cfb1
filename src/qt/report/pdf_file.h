#pragma once
#include <filesystem>
#include <functional>
#include <string>

class QPdfWriter;

namespace quorvel::qt {

/// Has a PDF file painted. The file that was there stays until the new one is whole; a device is written
/// directly. @throws std::runtime_error in Spanish
void write_pdf_file(const std::filesystem::path& file, const std::string& title,
                    const std::function<void(QPdfWriter&)>& paint);

} // namespace quorvel::qt
