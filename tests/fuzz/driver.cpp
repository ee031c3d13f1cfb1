// Goal: no conversation brings the driver down: each request has its one reply, and afterwards the books
// balance and nothing is locked. A line of the input is a JSON request or, for short, "op
// field=value|field=value".
#include "driver/driver.h"

#include "apoyo/empresa.h"
#include "dbtools/esquema.h"
#include "dbtools/revisar.h"
#include "fuzz/fuzz.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

namespace quorvel::fuzz {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

struct ImpresorMudo final : ReportPrinter {
    bool run(const ReportJob&) override { return true; }
};

std::string leido(const fs::path& archivo) {
    std::error_code ec;
    const auto largo = fs::file_size(archivo, ec);
    std::string texto(ec ? 0 : largo, '\0');
    std::ifstream(archivo, std::ios::binary).read(texto.data(), static_cast<std::streamsize>(texto.size()));
    return texto;
}
bool iguales(const fs::path& a, const fs::path& b) { return fs::exists(b) && leido(a) == leido(b); }

/// Databases and files of the input are always those of this process's folder, which each input finds as the
/// first one did: what an input left as it was is neither made anew nor looked into.
class Lugar {
public:
    Lugar() {
        for (const fs::path& carpeta : {modelo(), uso()}) fs::create_directory(carpeta);
        dbtools::crear_esquema("sqlite:" + (modelo() / "empresa.db").string());
        sembrar_empresa(*abrir_sesion("sqlite:" + (modelo() / "empresa.db").string()));
        fs::current_path(carpeta_.ruta);
    }
    void renovar() const {
        for (const auto& e : fs::directory_iterator(uso()))
            if (!fs::exists(modelo() / e.path().filename())) fs::remove_all(e);
        for (const auto& e : fs::directory_iterator(modelo()))
            if (const fs::path copia = uso() / e.path().filename(); !iguales(e, copia))
                fs::copy_file(e, copia, fs::copy_options::overwrite_existing);
    }
    /// The report database as a first conversation leaves it belongs to the model.
    void recordar_informes() const {
        if (!fs::exists(modelo() / "print.db")) fs::copy_file(uso() / "print.db", modelo() / "print.db");
    }
    [[nodiscard]] bool cambiada() const { return !iguales(modelo() / "empresa.db", uso() / "empresa.db"); }
    [[nodiscard]] std::string conexion() const { return "sqlite:" + (uso() / "empresa.db").string(); }
    [[nodiscard]] Json crear(Json campos) const {
        campos["op"] = "create";
        campos["db"] = conexion();
        campos["reportdb"] = (uso() / "print.db").string();
        campos["folder"] = campos["printdir"] = uso().string();
        campos["today"] = "15/06/2024";
        if (!campos.contains("class")) campos["class"] = "clsQuorvel";
        if (!campos.contains("props"))
            campos["props"] = {{"glbEmpresa", 1},       {"glbN_empresa", "PRUEBA"},
                               {"glbUsuario", 1},       {"glbN_usuario", "ANA"},
                               {"glbAlias", 1},         {"glbPrograma", "CONTAB"},
                               {"glbPermiso", "11111"}, {"glbTipoImpresora", ""}};
        return campos;
    }
    [[nodiscard]] std::string archivo(const std::string& ruta) const {
        return (uso() / fs::path(ruta).filename()).string();
    }

private:
    [[nodiscard]] fs::path modelo() const { return carpeta_.ruta / "modelo"; }
    [[nodiscard]] fs::path uso() const { return carpeta_.ruta / "uso"; }
    Carpeta carpeta_;
};

Json desde_breve(std::string_view linea) {
    const auto blanco = linea.find(' ');
    Json pedido{{"op", std::string(linea.substr(0, blanco))}};
    linea.remove_prefix(blanco == std::string_view::npos ? linea.size() : blanco + 1);
    while (!linea.empty()) {
        const auto fin = linea.find('|');
        const std::string_view campo = linea.substr(0, fin);
        linea.remove_prefix(fin == std::string_view::npos ? linea.size() : fin + 1);
        const auto igual = campo.find('=');
        if (igual == std::string_view::npos) continue;
        const std::string clave(campo.substr(0, igual));
        const std::string valor(campo.substr(igual + 1));
        const bool numero = clave == "row" || clave == "col" || clave == "index" || clave == "object";
        if (clave == "args" || clave == "where")
            pedido[clave] = Json::parse(valor, nullptr, false);
        else if (numero)
            pedido[clave] = std::atoi(valor.c_str());
        else
            pedido[clave] = valor;
    }
    return pedido;
}

std::string enviado(const Json& j) { return j.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// The request as it is sent: as written, but for where databases and files are.
std::string pedido(const Lugar& lugar, std::string_view linea) {
    const bool completo = linea.starts_with('{') || linea.starts_with('[');
    Json j = completo ? Json::parse(linea, nullptr, false) : desde_breve(linea);
    if (!j.is_object()) return std::string(linea); // no request, or none that can be read
    const Json op = j.value("op", Json());
    if (op == "create") return enviado(lugar.crear(std::move(j)));
    if (completo && op != "file") return std::string(linea);
    if (op == "file" && j.contains("path"))
        j["path"] = lugar.archivo(j["path"].is_string() ? j["path"].get<std::string>() : "x");
    return enviado(j);
}

/// @return the replies
std::string conversar(const std::string& guion) {
    std::istringstream entrada(guion);
    std::ostringstream salida;
    const OpcionesDriver opciones{[](const auto&, auto) { return std::make_unique<ImpresorMudo>(); },
                                  QUORVEL_DATA "/reports"};
    exigir(run_driver(entrada, salida, opciones) == 0, "the driver ends in order");
    return salida.str();
}

void exigir_respuestas(std::istream& respuestas, std::size_t pedidos) {
    std::size_t n = 0;
    for (std::string linea; std::getline(respuestas, linea); ++n) {
        const Json r = Json::parse(linea, nullptr, false);
        exigir(r.is_object() && r.contains("ok") && r.contains("waiting"), "a reply is a JSON object", linea);
    }
    exigir(n == pedidos, "each request has one reply", std::to_string(n) + " of " + std::to_string(pedidos));
}

void exigir_en_orden(const std::string& conexion) {
    for (const std::string& falla : dbtools::revisar(conexion))
        exigir(false, "the books are in order", falla);
    const auto db = abrir_sesion(conexion);
    const auto rs = db->NewRecord("select documento,num_docum from ctcquorvel where bloqueo_usuario<>0");
    exigir(rs->eof(), "no lock stays");
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    static const Lugar lugar;
    std::string guion = lugar.crear(Json::object()).dump() + "\n" +
                        R"({"op":"call","member":"ShowForm"})"
                        "\n";
    lugar.renovar();
    if (static bool primera = true; std::exchange(primera, false)) {
        (void)conversar(guion);
        lugar.recordar_informes();
    }
    std::size_t pedidos = 2;
    std::string_view resto = texto(data, size);
    while (!resto.empty() && pedidos < 60) {
        const std::string una = pedido(lugar, primera_linea(resto));
        if (una.find_first_not_of(" \t\r") == std::string::npos) continue;
        guion += una + "\n";
        ++pedidos;
        const Json j = Json::parse(una, nullptr, false);
        if (j.is_object() && j.value("op", Json()) == "quit") break;
    }
    std::istringstream respuestas(conversar(guion));
    exigir_respuestas(respuestas, pedidos);
    if (lugar.cambiada()) exigir_en_orden(lugar.conexion());
    return 0;
}
