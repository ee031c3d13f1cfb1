#include "interchange/cheque.h"

#include "interchange/monto_papel.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/anotar.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"

namespace quorvel {

namespace {

std::string consulta(const Clave& k) { return "select * from ctcquorvel " + sql_clave_corta(k); }

std::string actualizacion(const Clave& k, const Cheque& c) {
    return "update ctcquorvel set cheque=" + sql_texto(c.cheque) + ",fecha_cheque=" + sql_fecha(c.fecha) +
           ",beneficiario=" + sql_texto(c.beneficiario) + ",banco=" + sql_texto(c.banco) +
           ",cuenta=" + sql_texto(c.cuenta) + ",nominativo=" + sql_numero(c.nominativo) +
           ",cruzado=" + sql_numero(c.cruzado) + sql_clave_corta(k);
}

} // namespace

std::optional<Cheque> leer_cheque(clsConexion& db, const Clave& clave) {
    const auto rs = db.NewRecord(consulta(clave));
    if (rs->eof() || rs->fields("beneficiario").Value.null()) return {};
    const auto texto = [&](const char* columna) { return recortar_fin(rs->fields(columna).Value.text()); };
    // numbers in this schema, texts in older ones
    const auto marca = [&](const char* columna) { return rs->fields(columna).Value.number() == 1 ? 1 : 0; };
    Cheque c;
    c.cheque = texto("cheque");
    c.banco = texto("banco");
    c.cuenta = texto("cuenta");
    c.beneficiario = texto("beneficiario");
    c.fecha = rs->fields("fecha_cheque").Value.date();
    c.nominativo = marca("nominativo");
    c.cruzado = marca("cruzado");
    return c;
}

std::optional<std::int64_t> proximo_cheque(clsConexion& db, const std::string& banco,
                                           const std::string& cuenta) {
    constexpr double MAYOR = 9e15; // whole numbers are exact up to there
    // the column is a text: its maximum as a number, or 999 would come after 1040
    const auto rs =
        db.NewRecord("select max(val(cheque)) as cheque from ctcquorvel where banco=" + sql_texto(banco) +
                     " and cuenta=" + sql_texto(cuenta) + " and cheque<>''");
    if (rs->fields("cheque").Value.null()) return {};
    const double mayor = rs->fields("cheque").Value.number();
    if (mayor < 0 || mayor > MAYOR) return {};
    return static_cast<std::int64_t>(mayor) + 1;
}

Desenlace GrabarCheque(clsConexion& db, const Clave& clave, const Cheque& c, int usuario) {
    const auto grabar = [&] {
        const auto rs = db.NewRecord(consulta(clave));
        if (rs->eof()) throw PasoFallido("Comprobante contable no encontrado");
        Clave guardada = clave;
        guardada.subsistema = rs->fields("subsistema").Value.text();
        const std::string sql = actualizacion(clave, c);
        exigir(db, sql, ("problemas para modificar factura sql:" + sql).c_str());
        anotar(db, leer_proteccion(db, clave.empresa), guardada,
               {.usuario = usuario, .operacion = operacion::CHEQUE});
    };
    return en_transaccion(db, grabar, [&] { return leer_cheque(db, clave) == c; });
}

void preparar_cheque(clsConexion& reporte, const std::string& empresa, const Cheque& c,
                     const std::string& total) {
    const MontoPapel monto = monto_papel(total);
    const auto cortado = [](const std::string& t, std::size_t n) { return sql_texto(primeros(t, n)); };
    const auto parte = [&](auto&& f, const char* patron) {
        return sql_texto(c.fecha ? formato(f(*c.fecha), patron) : std::string());
    };
    Transaccion t(reporte);
    ejecutar_impresion(reporte, "delete from ctccheque");
    ejecutar_impresion(
        reporte,
        "insert into ctccheque values(" + cortado(empresa, 50) + ",1," + cortado(c.beneficiario, 150) + "," +
            sql_texto(c.fecha ? fecha_dmy(*c.fecha) : std::string()) + "," +
            parte([](Fecha f) { return dia(f); }, "00") + "," + parte([](Fecha f) { return mes(f); }, "00") +
            "," + parte([](Fecha f) { return anio(f); }, "0") + "," + sql_texto(monto.letras) + "," +
            monto.cifra + "," + sql_texto(c.nominativo ? "1" : "0") + "," + sql_texto(c.cruzado ? "1" : "0") +
            "," + cortado(c.cheque, 30) + ")");
    ejecutar_impresion(reporte, "insert into ctccheque(secuencia) values(2)");
    t.confirmar();
}

} // namespace quorvel
