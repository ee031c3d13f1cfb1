#include "platform/report/report.h"

#include "text/letras_utf8.h"

namespace quorvel {

std::string pdf_name(const std::string& about) {
    constexpr std::size_t LONGEST = 60; // code points; a file name has 255 bytes
    std::string name;
    for (const char c : sin_controles(about)) {
        const char kept = std::string_view("/\\:*?\"<>|").find(c) == std::string_view::npos ? c : ' ';
        if (kept != ' ' || (!name.empty() && name.back() != ' ')) name += kept;
    }
    name = recortar(primeros(name, LONGEST));
    while (name.starts_with('.')) name.erase(0, 1); // no hidden file
    return (name.empty() ? "papel" : name) + ".pdf";
}

} // namespace quorvel
