#include "assistants/documentos.h"

#include "platform/db/literal.h"

namespace quorvel {
namespace {

int habilitar(clsConexion& db, const char* documento) {
    const std::string doc = sql_texto(documento);
    if (!db.NewRecord("SELECT * from adxdoc_sub b where b.subsistema='01' and b.documento=" + doc)->eof())
        return 0;
    return db.executesql("Insert into adxdoc_sub(subsistema, documento) values ('01'," + doc + ") ");
}

} // namespace

int habilitar_documentos_caja(clsConexion& db) { return habilitar(db, "006") + habilitar(db, "007"); }

} // namespace quorvel
