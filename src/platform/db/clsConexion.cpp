#include "platform/db/clsConexion.h"

#include "platform/db/literal.h"

namespace quorvel {

bool clsConexion::has_table(const std::string& name) {
    if (tables_.contains(name)) return true;
    const std::string text = sql_texto(name);
    const auto rs = NewRecord(
        TypeDB() == 2 ? "select count(*) as n from sqlite_master where type='table' and name=" + text
                      : "select case when to_regclass(" + text + ") is null then 0 else 1 end as n");
    if (rs->at(0).integer() == 0) return false;
    tables_.insert(name);
    return true;
}

} // namespace quorvel
