#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

/// What a target does with one input; it ends the process when a promise is broken.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quorvel::fuzz {

inline std::string_view texto(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}
/// Cuts the first line off. The rest is empty when there is none.
inline std::string_view primera_linea(std::string_view& resto) {
    const auto fin = resto.find('\n');
    const std::string_view linea = resto.substr(0, fin);
    resto.remove_prefix(fin == std::string_view::npos ? resto.size() : fin + 1);
    return linea;
}
inline void exigir(bool cumple, const char* promesa, std::string_view detalle = {}) {
    if (cumple) return;
    std::fprintf(stderr, "broken: %s\n%s\n", promesa, std::string(detalle).c_str());
    std::abort();
}
/// A folder of this process in memory where there is such a place; it goes away at its orderly end.
class Carpeta {
public:
    Carpeta() {
        std::error_code ec;
        const bool memoria = std::filesystem::is_directory("/dev/shm", ec);
        std::string nombre = memoria ? "/dev/shm" : std::filesystem::temp_directory_path().string();
        nombre += "/fuzz.XXXXXX";
        exigir(mkdtemp(nombre.data()) != nullptr, "a folder can be made");
        ruta = nombre;
    }
    ~Carpeta() {
        std::error_code ec;
        std::filesystem::remove_all(ruta, ec);
    }
    Carpeta(const Carpeta&) = delete;
    Carpeta& operator=(const Carpeta&) = delete;
    std::filesystem::path ruta;
};

} // namespace quorvel::fuzz
