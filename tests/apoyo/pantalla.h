#pragma once
#include "apoyo/empresa.h"
#include "apoyo/escritorio_guion.h"
#include "apoyo/sesiones.h"
#include "screen/frmQuorvel.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvel::pruebas {

/// Notes what would have been printed.
struct ImpresorNotas final : ReportPrinter {
    std::vector<std::string> trabajos;
    bool run(const ReportJob& job) override {
        trabajos.push_back(job.definition.filename().string() + job.pdf.string());
        return true;
    }
};

/// The small company with its voucher screen, worked as a person works it. Today is 15/06/2024.
class Pantalla {
public:
    explicit Pantalla(apoyo::Motor motor = apoyo::Motor::sqlite);
    /// A second screen on the same database, with a session of its own.
    Pantalla(const Pantalla& otra, int usuario);
    /// A screen on a database that is there, with this folder as the user's own.
    Pantalla(const std::string& conexion, const std::string& carpeta, int usuario);
    ~Pantalla();

    void abrir(const std::string& permiso = "11111");
    /// Replaces a box's text key by key and leaves it. @return false when it could not be entered or left
    bool escribir(const char* control, const std::string& texto);
    /// Picks a list entry by its text.
    void elegir(const char* control, const std::string& texto);
    void pulsar(const char* control);
    /// Types into a grid cell and commits it. @return false when the cell refused
    bool celda(int fila, int columna, const std::string& texto);
    void tecla(const char* nombre);
    /// Attaches a new file, "contenido de NOMBRE".
    void adjuntar(const std::string& nombre);
    /// Grid row as "cell|cell|…" of the columns 1 to 5.
    [[nodiscard]] std::string fila(int i) const;
    [[nodiscard]] std::string totales() const;
    /// Fills a balanced general voucher of one amount: 101001 against 301001.
    void comprobante(const std::string& monto, const std::string& documento = "001 TRASPASO");
    /// Enters and saves vouchers until the process is killed, telling the number of each that the screen
    /// called saved. @param aviso where to write it @param monto of the first; each is one peso larger
    void grabar_sin_fin(int aviso, int monto = 1, bool con_adjunto = false);
    void guardar() { f.ctlRegistro1.press(ui::ctlRegistro::Function::Save); }
    void nuevo() { f.ctlRegistro1.press(ui::ctlRegistro::Function::New); }
    /// Searches and picks the row with this number (and kind).
    void buscar(const std::string& numero, const std::string& documento = "001");
    std::vector<std::string> mensajes() { return escritorio.tomar_mensajes(); }
    std::string sql(const std::string& consulta) { return apoyo::filas(*db, consulta); }

    std::string conexion, carpeta;
    std::unique_ptr<clsConexion> db, reporte;
    EscritorioGuion escritorio;
    ImpresorNotas impresor;
    RelojFijo reloj;
    frmQuorvel f;
};

/// Picks the first row of the open lookup whose column begins with the text.
void elegir_fila(ui::Form& forma, std::size_t columna, const std::string& valor);
/// Types a text key by key into what has the focus.
void teclear(ui::Form& forma, const std::string& texto);

} // namespace quorvel::pruebas
