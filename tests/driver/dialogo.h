#pragma once
#include "apoyo/empresa.h"
#include "driver/driver.h"

#include <ext/stdio_filebuf.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <thread>

namespace quorvel::apoyo {

using Json = nlohmann::ordered_json;

/// "Prints" by telling the name of the paper.
struct ImpresorNombres final : ReportPrinter {
    explicit ImpresorNombres(std::function<void(const std::string&)> i) : impreso(std::move(i)) {}
    std::function<void(const std::string&)> impreso;
    bool run(const ReportJob& job) override {
        impreso(job.definition.stem().string() + ".pdf");
        return true;
    }
};

/// A conversation with a driver of its own thread, one request and one reply at a time.
class Dialogo {
public:
    Dialogo() {
        driver_ = std::thread([this] {
            __gnu_cxx::stdio_filebuf<char> lee(ida_.fd[0], std::ios::in),
                escribe(vuelta_.fd[1], std::ios::out);
            std::istream entrada(&lee);
            std::ostream salida(&escribe);
            run_driver(entrada, salida,
                       {[](const auto&, auto impreso) { return std::make_unique<ImpresorNombres>(impreso); },
                        QUORVEL_DATA "/reports"});
        });
    }
    ~Dialogo() { colgar(); }
    Dialogo(const Dialogo&) = delete;
    Dialogo& operator=(const Dialogo&) = delete;

    /// Closes the input as a host that dies would, and waits for the driver's end.
    void colgar() {
        if (!driver_.joinable()) return;
        pedidos_.close();
        driver_.join();
        respuestas_.close();
    }
    std::string linea(const std::string& texto) {
        std::string respuesta;
        std::ostream(&pedidos_) << texto << std::endl;
        std::istream lector(&respuestas_);
        std::getline(lector, respuesta);
        return respuesta;
    }
    Json pedir(const Json& pedido) { return Json::parse(linea(pedido.dump())); }

private:
    struct Tubo {
        Tubo() {
            if (pipe(fd) != 0) throw std::runtime_error("pipe");
        }
        int fd[2]{};
    };
    Tubo ida_, vuelta_;
    __gnu_cxx::stdio_filebuf<char> pedidos_{ida_.fd[1], std::ios::out},
        respuestas_{vuelta_.fd[0], std::ios::in};
    std::thread driver_;
};

// Requests.
inline Json en(const char* op, Json campos = Json::object()) {
    Json j{{"op", op}};
    j.update(campos);
    return j;
}
inline Json escribe(const char* c, const std::string& t) {
    return en("enter", {{"control", c}, {"text", t}});
}
inline Json elige(const char* c, const std::string& t) { return en("select", {{"control", c}, {"text", t}}); }
inline Json pulsa(const char* c) { return en("click", {{"control", c}}); }
inline Json barra(const char* f) { return en("toolbar", {{"function", f}}); }
inline Json celda(int f, int c, const std::string& t) {
    return en("cell", {{"row", f}, {"col", c}, {"text", t}});
}
inline Json va(int f, int c) { return en("goto", {{"row", f}, {"col", c}}); }
inline Json responde(const char* b) { return en("answer", {{"button", b}}); }
inline Json archivo(const std::string& r) { return en("file", {{"path", r}}); }
inline Json mira(const char* c) { return en("state", {{"control", c}}); }
inline Json consulta(const std::string& q) { return en("sql", {{"query", q}}); }
inline Json llama(const char* m, Json args = Json::array()) {
    return en("call", {{"member", m}, {"args", std::move(args)}});
}

// What a reply must hold.
inline std::string dice(const std::string& texto, const char* icono = "critical") {
    return Json{{"text", texto}, {"icon", icono}, {"title", "Mensaje"}, {"buttons", {"ok"}}}.dump();
}
inline std::string pregunta(const std::string& texto) {
    return Json{{"text", texto}, {"icon", "question"}, {"title", "Mensaje"}, {"buttons", {"yes", "no"}}}
        .dump();
}
inline std::string campo(const char* clave, const Json& valor) {
    const std::string objeto = Json{{clave, valor}}.dump();
    return objeto.substr(1, objeto.size() - 2);
}
inline std::string foco(const char* c) { return campo("focus", c); }
inline std::string espera(const char* que) { return campo("waiting", que); }
inline std::string forma(const char* f) { return campo("form", f); }
const std::string CALLADO = R"("messages":[])", FALLA = R"("ok":false)";

/// A request and the pieces that its reply must hold; a reply fails only where FALLA is expected, and says
/// nothing where no message is expected.
struct Turno {
    Json pedido;
    std::vector<std::string> trozos;
};
inline void conversar(Dialogo& d, const std::vector<Turno>& turnos) {
    for (const Turno& t : turnos) {
        const std::string r = d.linea(t.pedido.dump());
        bool habla = false, falla = false;
        for (const std::string& trozo : t.trozos) {
            EXPECT_NE(r.find(trozo), std::string::npos) << t.pedido << "\n  " << r << "\n  lacks " << trozo;
            habla = habla || trozo.starts_with(R"({"text")");
            falla = falla || trozo == FALLA;
        }
        EXPECT_EQ(r.find(FALLA) != std::string::npos, falla) << t.pedido << "\n  " << r;
        if (!habla) {
            EXPECT_NE(r.find(CALLADO), std::string::npos) << t.pedido << "\n  " << r;
        }
    }
}

/// The small company on an engine, for one or more drivers.
struct Empresa {
    explicit Empresa(Motor motor) : conexion(conexion_empresa(motor)), db(abrir_sesion(conexion)) {}
    [[nodiscard]] Json crear(int usuario = 1, const char* clase = "clsQuorvel",
                             const char* hoy = "15/06/2024") const {
        const std::string carpeta = carpeta_nueva();
        return en("create", {{"class", clase},
                             {"db", conexion},
                             {"reportdb", carpeta + "/print.db"},
                             {"today", hoy},
                             {"folder", carpeta},
                             {"props",
                              {{"glbEmpresa", 1},
                               {"glbN_empresa", "PRUEBA"},
                               {"glbUsuario", usuario},
                               {"glbN_usuario", "ANA"},
                               {"glbAlias", 1},
                               {"glbPrograma", "CONTAB"},
                               {"glbPermiso", "11111"},
                               {"glbTipoImpresora", ""}}}});
    }
    /// A driver with the voucher screen open.
    void abrir(Dialogo& d, int usuario = 1) const {
        conversar(d, {{crear(usuario), {campo("object", 1), espera("idle")}},
                      {llama("ShowForm"), {espera("form"), forma("frmQuorvel")}}});
    }
    std::string conexion;
    std::unique_ptr<clsConexion> db;
};

/// Fills a voucher of CAJA against CAPITAL.
inline std::vector<Turno> asiento(const char* monto, const char* fecha = "10/06/2024") {
    return {{escribe("mskF_comp", fecha), {}},
            {elige("cmbDocumento", "001 TRASPASO"), {}},
            {escribe("txtconcepto", "Glosa"), {}},
            {elige("cmblibro", "CONTABLES"), {}},
            {celda(0, 1, "101001"), {}},
            {celda(0, 3, monto), {}},
            {va(1, 1), {}},
            {celda(1, 1, "301001"), {}},
            {va(2, 1), {}}};
}

} // namespace quorvel::apoyo
