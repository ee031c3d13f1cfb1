#include "platform/db/sqlite/recordset_sqlite.h"

#include <algorithm>

namespace quorvel {

bool RecordsetSqlite::fetch(std::vector<Value>& cells) {
    if (stmt_ == nullptr) {
        // a private table may have been made anew since the query was opened, so the columns come anew too
        stmt_ = session_.read_first(sql_, cells, columns_);
        if (stmt_ != nullptr) session_.reading.push_back(this);
        return stmt_ != nullptr;
    }
    try {
        if (session_.read_next(stmt_, cells)) return true;
    } catch (...) {
        stop();
        throw;
    }
    stop();
    return false;
}

void RecordsetSqlite::complete_now() {
    complete();
    stop();
}

void RecordsetSqlite::stop() {
    if (stmt_ == nullptr) return;
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
    auto& reading = session_.reading;
    reading.erase(std::remove(reading.begin(), reading.end(), this), reading.end());
}

} // namespace quorvel
