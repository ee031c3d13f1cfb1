// Goal: a long statement can be interrupted and leaves session and data as they were. Method: a sum over
// millions of generated rows that would take minutes, on both engines.
#include "apoyo/sesiones.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Espera : public ::testing::TestWithParam<Motor> {
protected:
    std::unique_ptr<clsConexion> db = sesion_nueva(GetParam());
    int asked = 0;

    Espera() {
        ejecutar(*db, "create table t (n integer)");
        ejecutar(*db, "insert into t values (0),(1),(2),(3),(4),(5),(6),(7),(8),(9)");
    }
    /// The digits joined eleven times: far longer than anyone waits.
    static std::string endless(const std::string& select, const std::string& end = "") {
        std::string from;
        for (char c = 'a'; c <= 'k'; ++c) from += std::string(c == 'a' ? "" : ",") + "t " + c;
        return select + " from " + from + end;
    }
    bool run(int answers, const std::function<void()>& work) {
        asked = 0;
        return interruptible(
            *db, [&] { return ++asked < answers; }, work);
    }
    void read(const std::string& sql) { (void)db->NewRecord(sql)->eof(); }
};
INSTANTIATE_TEST_SUITE_P(Motores, Espera, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(Espera, AnsweringFalseEndsTheStatement) {
    EXPECT_FALSE(run(4, [&] { read(endless("select sum(a.n*b.n) as s")); }));
    EXPECT_EQ(asked, 4) << "asked again and again before the answer was no, and no more after it";
    db->BeginTrans(); // behind a pooler a work table lives no longer
    EXPECT_FALSE(run(1, [&] {
        EXPECT_EQ(db->executesql(endless("select sum(a.n) as s into temporal", " group by b.n")), 0);
        throw ErrorSesion(db->last_error(), "");
    }));
    db->rollback();
    EXPECT_EQ(filas(*db, "select count(*) from t"), "10") << "the session goes on";
    db->BeginTrans();
    ejecutar(*db, "select a.n into temporal from t a");
    EXPECT_EQ(filas(*db, "select sum(n) from temporal"), "45");
    db->CommitTrans();
}

TEST_P(Espera, ATransactionOutlivesAnInterruptedQuery) {
    db->BeginTrans();
    ejecutar(*db, "insert into t values (10)");
    EXPECT_FALSE(run(2, [&] { read(endless("select max(a.n+b.n) as s")); }));
    ejecutar(*db, "insert into t values (11)");
    db->CommitTrans();
    EXPECT_EQ(filas(*db, "select max(n),count(*) from t"), "11|12");
}

TEST_P(Espera, OtherFailuresStayFailuresAndNothingIsAskedAfterwards) {
    EXPECT_TRUE(run(1000000, [&] { read("select n from t"); }));
    EXPECT_THROW(run(1000000, [&] { read("select n from nosuch"); }), ErrorSesion);
    asked = 0;
    read(endless("select count(*) as c", " where a.n=b.n and b.n=c.n and c.n=d.n and d.n=e.n and e.n=f.n"
                                         " and f.n=g.n and g.n=h.n and h.n=i.n and i.n=j.n and j.n=k.n"));
    EXPECT_EQ(asked, 0);
}

TEST_P(Espera, WhoIsAskedCannotUseTheSession) {
    std::string refused;
    EXPECT_FALSE(interruptible(
        *db,
        [&] {
            refused = db->executesql("delete from t") == 0 ? db->last_error() : "deleted";
            return false;
        },
        [&] { read(endless("select sum(a.n) as s")); }));
    EXPECT_EQ(refused, "La base de datos está ocupada");
    EXPECT_EQ(filas(*db, "select count(*) from t"), "10");
}

} // namespace
