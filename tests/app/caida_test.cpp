// Goal: the program is ended by force with a voucher half typed, and the next one has everything there.
// Method: the real program through its driver, SIGKILL, and a second one; on PostgreSQL every connection is
// cut in the middle as well.
#include "apoyo/empresa.h"
#include "apoyo/pg.h"
#include "apoyo/sesiones.h"
#include "dbtools/esquema.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>

using namespace quorvel;
using Json = nlohmann::ordered_json;

namespace {

/// The program as a child, one request and one reply at a time.
class Programa {
public:
    Programa(const std::string& conexion, const std::string& carpeta) {
        int ida[2], vuelta[2];
        if (pipe(ida) != 0 || pipe(vuelta) != 0) throw std::runtime_error("pipe");
        pid_ = fork();
        if (pid_ == 0) {
            dup2(ida[0], 0);
            dup2(vuelta[1], 1);
            for (const int fd : {ida[0], ida[1], vuelta[0], vuelta[1]}) close(fd);
            execl(QUORVEL_PROGRAMA, "quorvel", "driver", nullptr);
            _exit(127);
        }
        close(ida[0]);
        close(vuelta[1]);
        entrada_ = fdopen(ida[1], "w");
        salida_ = fdopen(vuelta[0], "r");
        pedir({{"op", "create"},
               {"class", "clsQuorvel"},
               {"db", conexion},
               {"reportdb", carpeta + "/print.db"},
               {"today", "15/06/2024"},
               {"folder", carpeta},
               {"props",
                {{"glbEmpresa", 1},
                 {"glbN_empresa", "Empresa"},
                 {"glbUsuario", 1},
                 {"glbN_usuario", "ana"},
                 {"glbAlias", 1},
                 {"glbPrograma", "Contabilidad"},
                 {"glbPermiso", "11111"}}}});
        pedir({{"op", "call"}, {"member", "ShowForm"}});
    }
    ~Programa() {
        matar();
        fclose(entrada_);
        fclose(salida_);
    }
    void matar() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }
    Json pedir(const Json& orden) {
        std::fputs((orden.dump() + "\n").c_str(), entrada_);
        std::fflush(entrada_);
        std::string linea;
        for (int c = std::fgetc(salida_); c != EOF && c != '\n'; c = std::fgetc(salida_))
            linea += static_cast<char>(c);
        const Json r = Json::parse(linea, nullptr, false);
        EXPECT_TRUE(r.is_object() && r.value("ok", false)) << orden.dump() << " → " << linea;
        return r;
    }
    void celda(int fila, int columna, const std::string& texto) {
        pedir({{"op", "cell"}, {"row", fila}, {"col", columna}, {"text", texto}});
    }
    /// Header texts and rows, the row being added too.
    std::string pantalla() {
        const Json e = pedir({{"op", "state"}, {"form", "frmQuorvel"}})["value"]["controls"];
        std::string texto;
        for (const char* nombre : {"mskF_comp", "cmbDocumento", "txtNum_doc", "cmblibro", "txtconcepto",
                                   "txtrut_persona", "txtnombre"})
            texto += e[nombre]["text"].dump() + " ";
        return texto + e["grdDetalle"]["rows"].dump() + e["grdDetalle"]["pending"].dump() +
               e["lblTotalDebe"]["caption"].dump() + e["lblTotalhaber"]["caption"].dump();
    }

private:
    pid_t pid_ = 0;
    std::FILE *entrada_ = nullptr, *salida_ = nullptr;
};

class Caida : public ::testing::TestWithParam<apoyo::Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, Caida, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& m) { return apoyo::nombre(m.param); });

TEST_P(Caida, TheNextProgramHasEverything) {
    const std::string conexion = apoyo::conexion_empresa(GetParam()), carpeta = apoyo::carpeta_nueva();
    std::string escrito;
    {
        Programa p(conexion, carpeta), otra(conexion, carpeta); // two windows of the same user
        p.pedir({{"op", "select"}, {"control", "cmbDocumento"}, {"text", "002 COMPRA"}});
        p.pedir({{"op", "select"}, {"control", "cmblibro"}, {"text", "COMPRAS"}});
        p.pedir({{"op", "enter"}, {"control", "txtconcepto"}, {"text", "Compra a medio escribir"}});
        p.pedir({{"op", "enter"}, {"control", "txtrut_persona"}, {"text", "76418352-5"}});
        otra.pedir({{"op", "enter"}, {"control", "txtconcepto"}, {"text", "la otra ventana"}});
        p.celda(0, 1, "501002");
        p.celda(0, 3, "100000");
        p.celda(1, 1, "109001");
        p.celda(1, 3, "19000");
        if (GetParam() == apoyo::Motor::postgres) apoyo::pg_cortar_conexiones();
        p.celda(2, 1, "201001");
        p.celda(2, 4, "119000");
        if (GetParam() == apoyo::Motor::postgres) apoyo::pg_cortar_conexiones();
        escrito = p.pantalla();
        EXPECT_NE(escrito.find("119.000"), std::string::npos) << escrito;
        p.matar();
        Programa q(conexion, carpeta);
        q.pedir({{"op", "key"}, {"key", "ctrl+r"}});
        EXPECT_EQ(q.pantalla(), escrito) << "and not what the living window holds";
        q.celda(2, 2, "000013");
        q.pedir({{"op", "goto"}, {"row", 0}, {"col", 1}});
        q.matar();
    }
    // both were ended by force; the last written draft comes first, the other one by the next key
    Programa r(conexion, carpeta);
    r.pedir({{"op", "key"}, {"key", "ctrl+r"}});
    const std::string primero = r.pantalla();
    EXPECT_NE(primero.find("000013"), std::string::npos) << primero;
    r.pedir({{"op", "key"}, {"key", "ctrl+r"}});
    EXPECT_NE(r.pantalla().find("la otra ventana"), std::string::npos);
    r.pedir({{"op", "quit"}});
}

} // namespace
