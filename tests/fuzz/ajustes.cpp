// Goal: what is set is got again and nothing else of the file changes. The first line of the input is the
// value, the rest is the file.
#include "fuzz/fuzz.h"
#include "platform/files/settings_file.h"
#include "text/letras_utf8.h"

#include <fstream>
#include <iterator>

namespace quorvel::fuzz {
namespace {

std::string contenido(const std::filesystem::path& ruta) {
    std::ifstream in(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Everything but one piece in the middle is as before.
bool solo_una_pieza(const std::string& antes, const std::string& ahora, std::size_t nuevo) {
    std::size_t inicio = 0, fin = 0;
    const std::size_t menor = std::min(antes.size(), ahora.size());
    while (inicio < menor && antes[inicio] == ahora[inicio]) ++inicio;
    while (fin < menor - inicio && antes[antes.size() - 1 - fin] == ahora[ahora.size() - 1 - fin]) ++fin;
    return ahora.size() - inicio - fin <= nuevo;
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    static const Carpeta carpeta;
    std::string_view resto = texto(data, size);
    const std::string valor(primera_linea(resto));
    const std::string antes(resto);
    const auto ruta = carpeta.ruta / "nivo.ini";
    std::ofstream(ruta, std::ios::binary) << antes;

    const SettingsFile ajustes(carpeta.ruta);
    const std::string vecino = ajustes.get("nivo", "base");
    exigir(ajustes.set("Nivo", "Anchos", valor), "a setting is written");
    exigir(ajustes.get("NIVO", "anchos") == sin_controles(valor), "a setting comes back", valor);
    exigir(ajustes.get("nivo", "base") == vecino, "the other settings stay", vecino);
    const std::string ahora = contenido(ruta);
    exigir(solo_una_pieza(antes, ahora, valor.size() + 24), "the rest of the file stays", ahora);
    exigir(ajustes.set("nivo", "anchos", valor) && contenido(ruta) == ahora, "once more changes nothing");
    return 0;
}
