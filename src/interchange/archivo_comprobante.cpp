#include "interchange/archivo_comprobante.h"

#include "platform/files/codepage.h"
#include "platform/files/engine_files.h"
#include "text/letras_utf8.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

namespace quorvel {

const char* const NOMBRES_CABECERA =
    "empresa;f_comp;documento;numero;moneda;debe;haber;concepto;libro;RUT_DOC;NUMERO_REF;TIPO_DOCUMENTO;"
    "NOMBRE;"
    "Fecha Doc;Fecha Vencimiento;Codigo No Recuperable; Activo Fijo;Código otro impuesto;Tasa Otro Impuesto;"
    "Monto Neto;Monto Exento;Asiento Apertura;Norma";
const char* const NOMBRES_DETALLE = "empresa;f_comp;documento;numero;secuencia;cuenta;auxiliar;debe_nacional;"
                                    "haber_nacional;glosa;centro_costo;"
                                    "conciliado;doc.pagado;otro imp.;Tasa Imp.";

std::string nombre_de_campo(const char* nombres, std::size_t i) {
    std::istringstream lista(nombres);
    std::string nombre;
    for (std::size_t n = 0; n <= i && std::getline(lista, nombre, ';'); ++n) {
    }
    return recortar(nombre);
}

namespace {

std::string monto(const std::optional<Decimal>& m) { return m ? m->plano() : std::string(); }

class Escritor {
public:
    template <std::size_t N> void linea(const std::array<std::string, N>& campos, const char* nombres) {
        ++n_;
        for (std::size_t i = 0; i < N; ++i) {
            if (i) bytes_ += ';';
            campo(campos[i], nombres, i);
        }
        bytes_ += "\r\n";
    }
    void titulos(const char* nombres) {
        ++n_;
        bytes_ += codigos_.to_windows1252(nombres).text + "\r\n";
    }
    std::string terminar() { return std::move(bytes_); }

private:
    void campo(const std::string& valor, const char* nombres, std::size_t i) {
        const auto donde = [&] {
            return "Línea " + std::to_string(n_) + ", campo \"" + nombre_de_campo(nombres, i) + "\": ";
        };
        if (const auto p = valor.find_first_of(std::string_view(";\r\n\t\0", 5)); p != std::string::npos)
            throw ErrorArchivo(donde() +
                               (valor[p] == ';' ? "no puede llevar \";\"" : "tiene un carácter de control") +
                               " (" + sin_controles(valor) + ")");
        Converted c = codigos_.to_windows1252(valor);
        if (c.bad)
            throw ErrorArchivo(donde() + "el carácter \"" +
                               primeros(std::string_view(valor).substr(*c.bad), 1) +
                               "\" no existe en el archivo (" + valor + ")");
        bytes_ += c.text;
    }
    Codepage codigos_;
    std::string bytes_;
    int n_ = 0;
};

} // namespace

std::string bytes_de_comprobante(const Comprobante& c, const std::string& empresa,
                                 const std::string& moneda) {
    const auto fecha = [](const std::optional<Fecha>& f) { return f ? fecha_dmy(*f) : std::string(); };
    const std::string documento = primeros(c.documento, 3);
    Escritor e;
    e.titulos(NOMBRES_CABECERA);
    e.linea(std::array<std::string, CAMPOS_CABECERA>{empresa,
                                                     fecha(c.f_comp),
                                                     documento,
                                                     c.num_docum,
                                                     moneda,
                                                     c.totales.debe.plano(),
                                                     c.totales.haber.plano(),
                                                     c.concepto,
                                                     c.libro,
                                                     c.rut_persona,
                                                     c.num_ref,
                                                     c.doc_libro,
                                                     c.nombre,
                                                     fecha(c.fecha_factura),
                                                     fecha(c.fecha_pago),
                                                     recortar(primeros(c.codigo_no_recuperable, 2)),
                                                     std::to_string(c.activo_fijo),
                                                     recortar(primeros(c.codigo_otro_impuesto, 3)),
                                                     reemplazar(c.tasa_impuesto_otro, ",", "."),
                                                     std::to_string(c.monto_neto.pesos()),
                                                     std::to_string(c.monto_exento.pesos()),
                                                     std::to_string(c.apertura),
                                                     primeros(c.ifrs, 1)},
            NOMBRES_CABECERA);
    e.titulos(NOMBRES_DETALLE);
    int secuencia = 0;
    for (const Linea& l : c.lineas)
        e.linea(std::array<std::string, CAMPOS_DETALLE>{empresa, fecha(c.f_comp), documento, c.num_docum,
                                                        std::to_string(++secuencia), l.centro, l.auxiliar,
                                                        monto(l.debe), monto(l.haber), l.glosa, l.centro2,
                                                        l.conciliado, l.num_ref, l.codigo_otro_impuesto,
                                                        reemplazar(l.tasa_impuesto_otro, ",", ".")},
                NOMBRES_DETALLE);
    return e.terminar();
}

void escribir_archivo(const std::filesystem::path& archivo, const std::string& bytes) {
    const auto falla = [&](const std::filesystem::path& que) {
        return ErrorArchivo("No se puede escribir el archivo " + que.string() + ": " + std::strerror(errno));
    };
    if (engine_file(archivo)) throw ErrorArchivo(engine_file_text(archivo));
    std::string temporal = archivo.string() + ".XXXXXX";
    const int fd = ::mkstemp(temporal.data());
    if (fd < 0) throw falla(archivo);
    bool bien = ::fchmod(fd, 0644) == 0;
    for (std::size_t n = 0; bien && n < bytes.size();) {
        const ssize_t escritos = ::write(fd, bytes.data() + n, bytes.size() - n);
        if (escritos < 0 && errno != EINTR) bien = false;
        if (escritos > 0) n += static_cast<std::size_t>(escritos);
    }
    bien = bien && ::fsync(fd) == 0;
    bien = ::close(fd) == 0 && bien;
    if (bien && std::rename(temporal.c_str(), archivo.c_str()) == 0) return;
    const ErrorArchivo e = falla(archivo);
    ::unlink(temporal.c_str());
    throw e;
}

std::string leer_archivo(const std::filesystem::path& archivo) {
    if (engine_file(archivo)) throw ErrorArchivo(engine_file_text(archivo));
    errno = 0;
    std::ifstream in(archivo, std::ios::binary);
    if (!in || std::filesystem::is_directory(archivo))
        throw ErrorArchivo("No se puede abrir el archivo " + archivo.string() +
                           (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
    std::ostringstream texto;
    texto << in.rdbuf();
    return std::move(texto).str();
}

} // namespace quorvel
