#include "historia/version.h"

#include "historia/columnas.h"
#include "platform/db/literal.h"
#include "platform/files/sha256.h"
#include "text/letras_utf8.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>

namespace quorvel {
namespace {

const std::string& maquina() {
    static const std::string nombre = [] {
        std::array<char, 256> texto{};
        return ::gethostname(texto.data(), texto.size() - 1) == 0 ? std::string(texto.data()) : std::string();
    }();
    return nombre;
}

std::string de_cabeza(const char* columna, int empresa) {
    return std::string("(select ") + columna + " from ctmhistoria where empresa=" + sql_numero(empresa) + ")";
}

/// As huella_de() joins them.
constexpr const char* SUMA =
    "sha256_hex(empresa || '\n' || numero || '\n' || momento || '\n' || anterior || '\n' ||"
    " usuario || '\n' || maquina || '\n' || operacion || '\n' || grupo || '\n' || clave ||"
    " '\n' || cabecera || '\n' || lineas || '\n' || adjuntos || '\n' || sumas)";

std::string sql_tomar(const Nota& n) {
    std::string sql =
        "update ctmhistoria set numero=numero + 1, momento=utc_now() where empresa=" + sql_numero(n.empresa);
    if (n.solo_abierto && !n.clave.empty())
        sql += " and (cerrado=0 or meses not like " + sql_texto("%" + n.clave.substr(0, 7) + "%") + ")";
    return sql;
}

std::vector<std::string> sentencias(const Nota& n, const std::string& contenido) {
    const std::string e = sql_numero(n.empresa);
    return {sql_tomar(n),
            "insert into ctdhistoria(empresa,numero,momento,anterior,usuario,maquina,operacion,grupo,clave,"
            "cabecera,lineas,adjuntos,sumas) values (" +
                e + "," + de_cabeza("numero", n.empresa) + "," + de_cabeza("momento", n.empresa) + "," +
                de_cabeza("huella", n.empresa) + "," + sql_numero(n.usuario) + "," + sql_texto(maquina()) +
                "," + sql_texto(n.operacion) + "," + sql_texto(n.grupo) + "," + sql_texto(n.clave) + "," +
                contenido + "," + sql_texto(n.sumas) + ")",
            std::string("update ctmhistoria set huella=(select ") + SUMA +
                " from ctdhistoria where empresa=ctmhistoria.empresa and numero=ctmhistoria.numero) where "
                "empresa=" +
                e};
}

} // namespace

std::string clave_version(Fecha f_comp, const std::string& documento, const std::string& subsistema,
                          const std::string& num_docum) {
    return fecha_iso(f_comp) + "|" + recortar_fin(documento) + "|" + recortar_fin(subsistema) + "|" +
           recortar_fin(num_docum);
}

std::string nuevo_grupo() {
    static std::atomic<unsigned> cuantos = 0;
    const auto ahora = std::chrono::system_clock::now().time_since_epoch();
    return maquina() + "-" + std::to_string(::getpid()) + "-" + std::to_string(ahora.count()) + "-" +
           std::to_string(++cuantos);
}

std::string sql_contenido(const std::string& donde) {
    return "(select json_array(" + lista_sql(COLUMNAS_CABECERA) + ") from ctcquorvel" + donde +
           "),coalesce((select json_group_array(json_array(" + lista_sql(COLUMNAS_LINEA) +
           ")) from (select * from ctdquorvel" + donde +
           " order by secuencia) d),'[]'),coalesce((select json_group_array(nombre) from (select nombre from"
           " ctdcomprad where comprobante_adjunto>0 and comprobante_adjunto=(select comprobante_adjunto from"
           " ctcquorvel" +
           donde + ") order by correlativo) a),'[]')";
}

std::vector<std::string> sql_version(const Nota& nota, const std::string& donde) {
    return sentencias(nota, sql_contenido(donde));
}

std::vector<std::string> sql_suceso(const Nota& nota) { return sentencias(nota, "'','',''"); }

std::string huella_de(int empresa, const Version& v) {
    Sha256 suma;
    suma.add(std::to_string(empresa) + '\n' + std::to_string(v.numero) + '\n' + v.momento + '\n' +
             v.anterior + '\n' + std::to_string(v.usuario));
    for (const std::string* texto :
         {&v.maquina, &v.operacion, &v.grupo, &v.clave, &v.cabecera, &v.lineas, &v.adjuntos, &v.sumas}) {
        suma.add("\n");
        suma.add(*texto);
    }
    return suma.hex();
}

} // namespace quorvel
