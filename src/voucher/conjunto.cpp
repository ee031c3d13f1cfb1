#include "voucher/conjunto.h"

#include "platform/db/literal.h"

namespace quorvel {
namespace {

std::unique_ptr<Recordset> duenos(clsConexion& db, int cuantos, std::int64_t conjunto) {
    return db.NewRecord("select top " + std::to_string(cuantos) +
                        " empresa from ctcquorvel where comprobante_adjunto=" + sql_numero(conjunto));
}

} // namespace

bool solo_de_uno(clsConexion& db, std::int64_t conjunto) {
    if (conjunto <= 0) return false;
    const auto rs = duenos(db, 2, conjunto);
    if (!rs->eof()) rs->MoveNext();
    return rs->eof();
}

bool conjunto_libre(clsConexion& db, std::int64_t conjunto) {
    return conjunto > 0 && db.reserve(conjunto) && duenos(db, 1, conjunto)->eof();
}

} // namespace quorvel
