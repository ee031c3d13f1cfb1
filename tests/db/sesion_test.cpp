#include "apoyo/pg.h"
#include "apoyo/pgbouncer.h"
#include "apoyo/servidor.h"
#include "apoyo/sesiones.h"

#include <gtest/gtest.h>

#include <set>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

/// Every case runs on both engines; each test has a database of its own.
class Sesion : public ::testing::TestWithParam<Motor> {
protected:
    std::unique_ptr<clsConexion> db = sesion_nueva(GetParam());
    void hacer(std::initializer_list<const char*> sentencias) {
        for (const char* s : sentencias) ejecutar(*db, s);
    }
    std::string rows(const std::string& sql) { return filas(*db, sql); }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Sesion, ::testing::ValuesIn(MOTORES), como);

struct Caso {
    const char *sql, *filas;
};

void crear_rut(clsConexion& db) {
    for (const char* s :
         {"create table a (b text(20), n integer, f date)", "create table c (p text(20), q text(20))",
          "insert into a values ('76-K ', 1, #03/05/2024#)", "insert into a values ('76-K', 2, null)",
          "insert into a values ('76-K  ', 3, #12/31/2024#)", "insert into a values ('', 4, null)",
          "insert into a values (' ', 5, null)", "insert into a values (null, 6, null)",
          "insert into c values ('76-K   ', 'uno')", "insert into c values ('  ', 'dos')"})
        ejecutar(db, s);
}

// Goal: texts that differ in trailing blanks only are the same text, wherever they are compared.
TEST_P(Sesion, TrailingBlanksDoNotCount) {
    crear_rut(*db);
    const Caso casos[] = {
        {"select n from a where b='76-K' order by n", "1;2;3"},
        {"select n from a where b='76-K    ' order by n", "1;2;3"},
        {"select n from a where b<>'76-K' order by n", "4;5"},
        {"select n from a where b<>' ' order by n", "1;2;3"},
        {"select n from a where b='' order by n", "4;5"},
        {"select n from a where b in ('x','76-K') order by n", "1;2;3"},
        {"select count(*) from (select distinct b from a where b is not null) z", "2"},
        {"select count(*) as cuantos from a where b is not null group by b order by cuantos", "2;3"},
        {"select a.n, c.q from a, c where a.b=c.p order by n", "1|uno;2|uno;3|uno;4|dos;5|dos"},
        {"select n from a where not exists (select 1 from c where p=b) order by n", "6"},
        {"select n from a where ''=' ' and n=1", "1"},
        {"select n from a where upper(b)='76-K' order by n", "1;2;3"},
        {"select n from a where upper(b) in ('76-K') order by n", "1;2;3"},
        {"select n from a where coalesce(b,'x')='76-K' order by n", "1;2;3"},
        {"select n from a where '76-K'=upper(b) order by n", "1;2;3"},
        {"select n from a where b||'' = '76-K' and n=2", "2"},
        {"select count(*) from (select distinct upper(b) as u from a where n<4) z", "1"},
        {"select count(*) from (select upper(b) as u from a where n<4 group by upper(b)) z", "1"},
        {"select n from a where (b='76-K' and n=1) or (n=4 and b='') order by n", "1;4"},
    };
    for (const Caso& c : casos) EXPECT_EQ(rows(c.sql), c.filas) << c.sql;
    EXPECT_EQ(db->NewRecord("select b from a where n=1")->fields("b").Value.text(), "76-K ")
        << "stored as written";
}

// Goal: the dialect's own words mean the same everywhere, and nothing inside quotes is touched.
TEST_P(Sesion, WordsOfTheDialect) {
    crear_rut(*db);
    hacer({"create table d (s text, g text(30), x double, f date)",
           "insert into d values ('12A','abc  ',1.5,#02/29/2024#)", "insert into d values ('','','-2',null)",
           "insert into d values (null,null,0,null)",
           "insert into d values ('123456789012345678901234567890','ñandú',0,#01/01/2023#)",
           "insert into d values ('0009','year(f) #01/01/2024# top 1 ''x''; --',0,#12/31/2023#)"});
    const Caso casos[] = {
        {"select top 1 n from a where n>1 order by n desc", "6"},
        {"select n from a where n in (select top 2 n from a order by n) order by n", "1;2"},
        {"select year(f), month(f), day(f) from a where n=3", "2024|12|31"},
        {"select n from a where year(f)=2024 and month(f)=3 order by n", "1"},
        {"select n from a where year(f) =2024 and month(f) =3 and day(f) =05 and b='76-K'", "1"},
        {"select n from a where year(f)=2024 and month(f)=2 and day(f)=31", ""},
        {"select n from a where f between #01/01/2024# and #12/30/2024#", "1"},
        {"select n from a where f=#3/5/2024#", "1"},
        {"select f from a where n=1", "2024-03-05"},
        {"select count(*) from d where len(g)=0", "2"},
        {"select len(g) from d where g='ñandú'", "5"},
        {"select len(g) from d where g='abc'", "3"},
        {"select val(s) from d where g='abc'", "12"},
        {"select val(s) from d where g=''", "0"},
        {"select count(*) from d where val(s)=0", "2"},
        {"select max(cast(s as integer)) as m from d where s<>'123456789012345678901234567890'", "12"},
        {"select max(val(s)) as m from d where g='nada'", ""},
        {"select n from a where n=0002", "2"},
        {"select 0012 as n from a where n=1", "12"},
        {"select count(*) from d where g='year(f) #01/01/2024# top 1 ''x''; --'", "1"},
        {"SELECT N FROM A WHERE B='76-K' AND N<>1 /* no; */ order by n; -- fin", "2;3"},
        {"select upper('año ñandú') as u from a where n=1", "AÑO ÑANDÚ"},
    };
    for (const Caso& c : casos) EXPECT_EQ(rows(c.sql), c.filas) << c.sql;
    EXPECT_GT(db->NewRecord("select max(val(s)) as m from d")->fields("m").Value.integer(),
              100000000000000000LL);
    EXPECT_THROW((void)rows("select n from a where f=#02/31/2024#"), ErrorSesion);
    EXPECT_THROW((void)rows("select n from a where f=##"), ErrorSesion);
}

// Goal: names match without regard to case, accents included; of two columns with one name the first counts.
TEST_P(Sesion, NamesWithoutRegardToCase) {
    hacer(
        {"create table ftcFactura (Factura integer, Fecha date, cotización double, Nombre text(10))",
         "insert into FTCFACTURA (factura, FECHA, COTIZACIÓN, nombre) values (7, #01/02/2024#, 1.25, 'ÑU')"});
    const auto rs = db->NewRecord("select * from FtcFactura where Cotización=1.25");
    EXPECT_EQ(rs->fields("COTIZACIÓN").Value.number(), 1.25);
    EXPECT_EQ(rs->fields("fecha").Value.date(), Fecha(std::chrono::year{2024} / 1 / 2));
    EXPECT_EQ(rs->columns()[2].name, "cotización");
    EXPECT_EQ(rs->columns()[0].kind, ColumnKind::number);
    EXPECT_EQ(rs->columns()[1].kind, ColumnKind::date);
    EXPECT_EQ(rs->columns()[3].kind, ColumnKind::text);
    EXPECT_THROW((void)rs->fields("nada"), std::out_of_range);
    rs->MoveNext();
    EXPECT_TRUE(rs->eof());
    EXPECT_THROW((void)rs->fields("fecha"), std::out_of_range);
    EXPECT_EQ(db->NewRecord("select sum(factura) as s from ftcfactura")->columns()[0].kind,
              ColumnKind::number);
}

// Goal: the first block of distinct pairs is the same whether an index leads from pair to pair or not.
TEST_P(Sesion, FirstBlockOfDistinctPairs) {
    hacer({"create table p (rut text(20), nombre text(60), otro integer)"});
    const char* const filas_de_p[] = {"'1','ANA '", "'1','ANA'",  "'2','ANA'", "'','ANA'",  "null,'ANA'",
                                      "'3','BETO'", "null,'CAL'", "' ',' '",   "'',''",     "'4',null",
                                      "'4 ',null",  "'5','DINA'", "'6','EVA'", "'5','DINA'"};
    for (const char* fila : filas_de_p)
        ejecutar(*db, "insert into p (rut, nombre) values (" + std::string(fila) + ")");
    const auto block = [&](const std::string& n) {
        return rows(
            "select count(*),min(rut),max(rut),max(nombre) from (SELECT distinct rut, nombre FROM p where "
            "1=1 AND rut<>' '  order by nombre limit " +
            n + ") as z");
    };
    const auto list = [&](const std::string& n) {
        return rows("SELECT distinct rut, nombre FROM p where 1=1 AND rut<>' '  order by nombre limit " + n);
    };
    const auto sorted = [](const std::string& text) { return std::multiset<char>(text.begin(), text.end()); };
    const std::string sin_indice[] = {list("200"), block("4"), block("200")};
    ejecutar(*db, "create index p_nombre on p (nombre, rut)");
    EXPECT_EQ(sorted(list("200")), sorted(sin_indice[0]));
    EXPECT_EQ(std::count(sin_indice[0].begin(), sin_indice[0].end(), ';'), 5);
    EXPECT_EQ(block("4"), sin_indice[1]);
    EXPECT_EQ(block("200"), sin_indice[2]);
    if (GetParam() == Motor::postgres) {
        EXPECT_EQ(list("4"), "1|ANA ;2|ANA;3|BETO;5|DINA");
    }
}

void crear_cuentas(clsConexion& db) {
    for (const char* s :
         {"create table ctmcentros (centro text(20), n_centro text(50), g_cuenta text(1), activo text(1))",
          "create table ctmgcuenta (g_cuenta text(1), n_g_cuenta text(50))",
          "insert into ctmgcuenta values ('1','ACTIVO')", "insert into ctmgcuenta values ('2','PASIVO')",
          "insert into ctmcentros values ('1101 ','CAJA','1','1')",
          "insert into ctmcentros values ('2101','O''HIGGINS','2','1')",
          "insert into ctmcentros values ('1102','BANCO','1','0')"})
        ejecutar(db, s);
}

// Goal: a search covers the whole recordset, whatever has been read of it.
TEST_P(Sesion, FindFirst) {
    crear_cuentas(*db);
    const auto rs = db->NewRecord(
        "select * from ctmcentros a, ctmgcuenta b  where a.g_cuenta=b.g_cuenta and a.activo='1'");
    rs->FindFirst("centro='2101'");
    ASSERT_FALSE(rs->nomatch());
    EXPECT_EQ(rs->fields("n_g_cuenta").Value.text(), "PASIVO");
    EXPECT_EQ(rs->fields("g_cuenta").Value.text(), "2");
    EXPECT_FALSE(rs->eof());
    rs->FindFirst("centro='1101'");
    EXPECT_FALSE(rs->nomatch());
    EXPECT_EQ(rs->fields("N_CENTRO").Value.text(), "CAJA");
    for (const char* nada : {"centro='1102'", "centro='zz'", "centro='' or 1=0", "centro='x''y'"}) {
        rs->FindFirst(nada);
        EXPECT_TRUE(rs->nomatch()) << nada;
    }
    rs->FindFirst("g_cuenta='2'");
    EXPECT_EQ(rs->fields("centro").Value.text(), "2101") << "a name that two tables have";
    rs->FindFirst("n_centro='O''HIGGINS'");
    EXPECT_FALSE(rs->nomatch());
    ejecutar(*db, "insert into ctmcentros values ('1199','NUEVA','1','1')");
    rs->FindFirst("centro='1199'");
    EXPECT_FALSE(rs->nomatch()) << "an account made meanwhile";
    EXPECT_THROW(rs->FindFirst("noexiste='1'"), ErrorSesion);
    const auto ordenado = db->NewRecord("select centro from ctmcentros order by centro desc");
    ordenado->FindFirst("centro<>'2101'");
    EXPECT_EQ(ordenado->fields("centro").Value.text(), "1199");
}

TEST_P(Sesion, ErrorsOfAQueryComeAtOnce) {
    crear_cuentas(*db);
    for (const char* malo :
         {"select nada from ctmcentros", "select * from noexiste", "selec 1", "select (1", "",
          "select centro from ctmcentros where centro='abierto", "select \"nada\" from ctmcentros",
          "select 12abc from ctmcentros", "select ? from ctmcentros", "update ctmcentros set centro='1'"})
        EXPECT_THROW((void)db->NewRecord(malo), ErrorSesion) << malo;
    EXPECT_FALSE(db->last_error().empty());
    EXPECT_EQ(rows("select count(*) from ctmcentros where centro='1'"), "0");
}

// Goal: whatever stands inside a value stays a value; one call runs one statement.
TEST_P(Sesion, QuotesAndSecondStatements) {
    crear_cuentas(*db);
    for (const char* doble : {"delete from ctmcentros where centro='zz'; delete from ctmcentros",
                              "select 1; drop table ctmcentros", "begin", "commit", "rollback"})
        EXPECT_EQ(db->executesql(doble), 0) << doble;
    EXPECT_EQ(rows("select count(*) from ctmcentros"), "3");
    EXPECT_EQ(
        db->executesql(
            "update ctmcentros set n_centro='x; delete from ctmcentros; --' where centro='1101' ; -- fin"),
        1);
    EXPECT_EQ(db->rows_affected(), 1);
    EXPECT_EQ(rows("select n_centro from ctmcentros where centro='1101'"), "x; delete from ctmcentros; --");
    for (const char* v : {"''''", "'O''Higgins'", "'a\\'", "'¿ñ?'", "'$1 ?1'"}) {
        const std::string valor = v;
        ASSERT_EQ(db->executesql("update ctmcentros set n_centro=" + valor + " where centro='1101'"), 1)
            << valor << db->last_error();
        EXPECT_EQ(rows("select centro from ctmcentros where n_centro=" + valor), "1101 ") << valor;
    }
}

// Goal: a refused statement is told by 0 and leaves the transaction and its other statements alone.
TEST_P(Sesion, FailureInsideATransaction) {
    hacer({"create table t (k integer, s text(10), constraint primario primary key (k))"});
    {
        db->BeginTrans();
        EXPECT_EQ(db->executesql("insert into t values (1,'a')"), 1);
        EXPECT_EQ(db->executesql("insert into t values (1,'b')"), 0);
        EXPECT_FALSE(db->last_error().empty());
        EXPECT_EQ(db->executesql("insert into noexiste values (1)"), 0);
        EXPECT_THROW((void)db->NewRecord("select nada from t"), ErrorSesion);
        EXPECT_EQ(db->executesql("insert into t values (2,'c')"), 1);
        EXPECT_EQ(rows("select k, s from t order by k"), "1|a;2|c");
        db->CommitTrans();
    }
    {
        Transaccion tx(*db);
        EXPECT_EQ(db->executesql("delete from t"), 1);
        EXPECT_EQ(db->rows_affected(), 2);
    }
    EXPECT_EQ(rows("select count(*) from t"), "2") << "not confirmed, so undone";
    EXPECT_EQ(db->executesql("update t set s='z' where k=99"), 1) << "no row changed is no failure";
    EXPECT_EQ(db->rows_affected(), 0);
    db->BeginTrans();
    EXPECT_THROW(db->BeginTrans(), ErrorSesion);
    db->rollback();
    db->rollback();
    EXPECT_EQ(db->executesql("insert into t values (3,'d')"), 1);
}

// Goal: a strict change ends at its first refused statement, is told which one it was, and leaves nothing.
TEST_P(Sesion, StrictTransactions) {
    hacer({"create table t (k integer, constraint primario primary key (k))"});
    const std::vector<std::string> bien = {"insert into t values (1)", "update t set k=2 where k=9",
                                           "insert into t values (3)"};
    {
        Transaccion tx(*db);
        EXPECT_EQ(db->executesql_each(bien), (std::vector<std::int64_t>{1, 0, 1}));
        EXPECT_EQ(db->executesql_each({}), std::vector<std::int64_t>{});
        tx.confirmar();
    }
    for (const char* mal : {"insert into t values (1)", "insert into noexiste values (1)", "select k from",
                            "update t set k=#02/31/2024# where k=3"}) {
        {
            Transaccion tx(*db);
            const std::vector<std::string> sql = {"insert into t values (4)", mal,
                                                  "insert into t values (5)"};
            EXPECT_EQ(db->executesql_each(sql).size(), 1U) << mal;
            EXPECT_FALSE(db->last_error().empty()) << mal;
            if (GetParam() == Motor::postgres) {
                EXPECT_THROW(tx.confirmar(), ErrorSesion) << mal;
            }
        }
        EXPECT_EQ(rows("select k from t order by k"), "1;3") << mal;
    }
    EXPECT_EQ(db->executesql("insert into t values (6)"), 1);
}

// Goal: the work table of the opening voucher, made again and again, with its texts compared as in the
// sources.
TEST_P(Sesion, SelectInto) {
    hacer({"create table l (centro text(20), auxiliar text(20), debe integer, f date, ref text(20))",
           "insert into l values ('1101','000001 ',100,#01/02/2024#,'')",
           "insert into l values ('1101','000001',50,#01/02/2024#,'9 ')",
           "insert into l values ('1102','',70,#01/02/2024#,' ')"});
    db->BeginTrans(); // behind a pooler such a table lives no longer
    for (int vez = 0; vez < 3; ++vez) {
        ASSERT_EQ(db->executesql("drop table temporal "), 1) << db->last_error();
        ASSERT_EQ(db->executesql("select a.centro,a.auxiliar,sum(a.debe) as debe, a.f, '7' as ref1 , a.ref "
                                 "as ref2 into temporal  from l a "
                                 " where a.f between #01/01/2024# and #12/31/2024# group by "
                                 "a.centro,a.auxiliar, a.ref, a.f order by a.centro"),
                  1)
            << db->last_error();
        ASSERT_EQ(db->executesql(
                      "update temporal set ref2=ref1 where len(auxiliar)>0 and len(ref2)=0 and len(ref1)>0 "),
                  1)
            << db->last_error();
        EXPECT_EQ(db->rows_affected(), 1);
        EXPECT_EQ(rows("select centro,auxiliar,sum(debe) as debe,ref2 from temporal where auxiliar='000001' "
                       "group by centro, auxiliar, ref2 order by centro, ref2"),
                  "1101|000001 |100|7;1101|000001|50|9 ");
        EXPECT_EQ(rows("select count(*) from temporal where ref1='7 ' and f=#01/02/2024#"), "3");
    }
    ASSERT_EQ(db->executesql("drop table temporal"), 1);
    ASSERT_EQ(db->executesql("select debe into temporal from l"), 1);
    EXPECT_EQ(rows("select sum(debe) from temporal"), "220") << "made anew with other columns";
    db->CommitTrans();
}

TEST_P(Sesion, StagingTables) {
    hacer({"create table ctcQuorvel (empresa text(50), f_comp date, secuencia integer, debe double, "
           "constraint primario primary key (empresa, secuencia))",
           "create table ctccheque (secuencia integer, monto double, constraint primario primary key "
           "(secuencia))",
           "create table ctcfactura (secuencia integer, cantidad int, constraint primario primary key "
           "(secuencia))",
           "insert into ctcQuorvel values('01',#03/05/2024#,-1,1234567.5)"});
    EXPECT_EQ(db->executesql("create table ctccheque (secuencia integer)"), 0);
    EXPECT_EQ(db->executesql("insert into ctcQuorvel values('01 ',#03/05/2024#,-1,0)"), 0)
        << "the key ignores blanks";
    EXPECT_EQ(rows("select * from ctcquorvel"), "01|2024-03-05|-1|1234567.5");
    const auto rs = db->NewRecord("select * from ctcquorvel");
    EXPECT_EQ(rs->fields("debe").Value.number(), 1234567.5);
    EXPECT_TRUE(db->NewRecord("select max(secuencia) as m from ctccheque")->fields("m").Value.null());
}

// Goal: numbers stay exact and values of one text differ from call to call although the statement is known.
TEST_P(Sesion, LiftedValues) {
    hacer({"create table v (k integer primary key, n bigint, x double, s text(60), f date)"});
    for (int k = 1; k <= 300; ++k)
        ejecutar(*db, "insert into v (k, n, x, s, f) values (" + std::to_string(k) + ",-" +
                          std::to_string(900000000000LL + k) + "," + std::to_string(k) + ".25,'it''s " +
                          std::to_string(k) + " ',#01/" + (k % 28 < 9 ? "0" : "") +
                          std::to_string(k % 28 + 1) + "/2024#)");
    EXPECT_EQ(rows("select n, x, s, f from v where k=1"), "-900000000001|1.25|it's 1 |2024-01-02");
    EXPECT_EQ(rows("select n, x, s, f from v where k=300"), "-900000000300|300.25|it's 300 |2024-01-21");
    ejecutar(*db, "update v set n= n - 5, s=null where k=300");
    EXPECT_EQ(rows("select n from v where n=-900000000305 and s is null"), "-900000000305");
    ejecutar(*db, "insert into v (k, s, n) values (350, 12, '34')"); // a number for a text and the reverse
    EXPECT_EQ(rows("select s, n from v where k='350' and n='34' and s='12'"), "12|34");
    ejecutar(*db, "delete from v where k=350");
    for (const char* anio : {"2024", "2023", "2024"}) // not lifted, so part of the statement's text
        EXPECT_EQ(rows("select count(*) from v where year(f)=" + std::string(anio)),
                  anio[3] == '4' ? "300" : "0");
    EXPECT_EQ(rows("select 'a' as x from v where k=1") + rows("select 'b' as x from v where k=1"), "ab");
    EXPECT_EQ(db->executesql("insert into v (k, s) values (400, 'a'), (401, 'b')"), 1) << db->last_error();
    for (int i = 0; i < 250; ++i) // more statements than are kept
        EXPECT_EQ(rows("select k as c" + std::to_string(i) + " from v where k=" + std::to_string(i + 1)),
                  std::to_string(i + 1));
    EXPECT_EQ(rows("select s from v where k=7"), "it's 7 ");
    EXPECT_TRUE(db->NewRecord("select s from v where k=300")->fields("s").Value.null());
}

// Goal: a long list is read as far as it is asked for and still shows one moment's rows, whatever happens
// meanwhile.
TEST_P(Sesion, LongListsWhileOtherStatementsRun) {
    hacer({"create table n (k integer primary key)", "create table m (k integer)"});
    db->BeginTrans();
    for (int k = 1; k <= 2000; ++k) ejecutar(*db, "insert into n values (" + std::to_string(k) + ")");
    db->CommitTrans();
    const std::string todo = "select k from n order by k";
    const auto a = db->NewRecord(todo), b = db->NewRecord(todo);
    ASSERT_FALSE(a->eof());
    ASSERT_FALSE(b->eof()) << "the same text is being read twice";
    {
        const auto dejado = db->NewRecord(todo);
        EXPECT_FALSE(dejado->eof());
    }
    b->FindFirst("k=1999");
    EXPECT_EQ(b->fields("k").Value.integer(), 1999);
    std::int64_t filas_leidas = 0;
    for (; !a->eof(); a->MoveNext()) {
        EXPECT_EQ(a->fields("k").Value.integer(), ++filas_leidas);
        if (filas_leidas == 300) {
            Transaccion tx(*db);
            ejecutar(*db, "insert into m select k from n");
            ejecutar(*db, "delete from n");
            tx.confirmar();
        }
    }
    EXPECT_EQ(filas_leidas, 2000);
    EXPECT_EQ(rows("select count(*) from n"), "0");
}

TEST_P(Sesion, ATableThatAnotherProgramChanges) {
    const std::string conexion = conexion_nueva(GetParam());
    const auto uno = abrir_sesion(conexion), otro = abrir_sesion(conexion);
    ejecutar(*uno, "create table t (k integer)");
    ejecutar(*uno, "insert into t values (7)");
    EXPECT_EQ(filas(*uno, "select * from t where k=7"), "7");
    ejecutar(*otro, "alter table t add column s text default 'x'");
    const auto rs = uno->NewRecord("select * from t where k=7");
    ASSERT_FALSE(rs->eof());
    EXPECT_EQ(rs->fields("s").Value.text(), "x");
    rs->MoveNext();
    EXPECT_TRUE(rs->eof());
    EXPECT_EQ(filas(*uno, "select * from t where k=8"), "");
}

// Goal: sessions that are lent one server connection by turns do not meet, and leave nothing on it.
TEST(SesionPostgres, APoolerFindsNothingLeftBehind) {
    Servidor servidor;
    const std::string directa = servidor.nueva(), base = directa.substr(directa.rfind('/') + 1);
    const Pgbouncer delante(servidor.puerto(), "transaction", 1);
    const auto a = abrir_sesion(delante.conexion(base)), b = abrir_sesion(delante.conexion(base));
    ejecutar(*a, "create table t (k integer, f date)");
    for (int vez = 0; vez < 3; ++vez)
        for (const auto* db : {&a, &b}) {
            Transaccion tx(**db);
            EXPECT_TRUE((*db)->reserve(7));
            const std::vector<std::string> dos(2, "insert into t values (1,#03/05/2024#)");
            EXPECT_EQ((*db)->executesql_each(dos).size(), 2U);
            EXPECT_EQ((*db)->executesql("select k into temporal from t"), 1) << (*db)->last_error();
            EXPECT_EQ(filas(**db, "select f from temporal, t where t.k=1 limit 1"), "2024-03-05");
            tx.confirmar();
        }
    EXPECT_EQ(filas(*b, "select count(*) from t"), "12");
    EXPECT_EQ(filas(*a,
                    "select (select count(*) from pg_prepared_statements),(select count(*) from pg_locks "
                    "where locktype='advisory'),(select count(*) from pg_class where relpersistence='t')"),
              "0|0|0");
    EXPECT_EQ(a->executesql("select k into temporal from t"), 0) << "would be somebody else's at once";
    b->BeginTrans();
    ejecutar(*b, "insert into t values (2,null)");
    servidor.caer();
    servidor.levantar();
    EXPECT_THROW(b->CommitTrans(), ErrorSesion);
    b->rollback();
    EXPECT_EQ(filas(*b, "select max(k) from t"), "1");
}

TEST(SesionPostgres, TheConnectionTextSaysWhatStandsBetween) {
    const std::string directa = pg_conexion_nueva();
    const auto con_nombre = [](const std::string& conexion) {
        const auto db = abrir_sesion(conexion);
        EXPECT_EQ(db->Name(), conexion);
        return filas(*db, "select count(*) from pg_prepared_statements") != "0";
    };
    EXPECT_FALSE(con_nombre(directa + "?connect_timeout=3&pool_mode=transaction"));
    EXPECT_TRUE(con_nombre(directa + "?pool_mode=session&connect_timeout=3"));
    EXPECT_THROW((void)abrir_sesion(directa + "?pool_mode=statement"), ErrorSesion);
}

TEST(SesionPostgres, ReconnectsOutsideATransaction) {
    const auto db = abrir_sesion(pg_conexion_nueva());
    ejecutar(*db, "create table t (k integer)");
    ejecutar(*db, "insert into t values (1)");
    db->BeginTrans();
    ejecutar(*db, "insert into t values (2)");
    pg_cortar_conexiones();
    EXPECT_EQ(db->executesql("insert into t values (3)"), 0);
    EXPECT_FALSE(db->last_error().empty());
    EXPECT_EQ(db->executesql("insert into t values (4)"), 0) << "half a change must not go on";
    EXPECT_THROW(db->CommitTrans(), ErrorSesion);
    db->rollback();
    EXPECT_EQ(filas(*db, "select k from t"), "1");
    EXPECT_EQ(db->TypeDB(), 1);
    for (const bool consulta : {false, true}) { // lost while nobody used it: nothing of the change is missing
        pg_cortar_conexiones();
        Transaccion tx(*db);
        if (consulta) {
            EXPECT_EQ(filas(*db, "select count(*) from t"), "2");
        }
        ejecutar(*db, "insert into t values (5)");
        tx.confirmar();
    }
    EXPECT_EQ(filas(*db, "select k from t order by k"), "1;5;5");
}

TEST(SesionPostgres, NumbersAreReservedUntilTheEnd) {
    const std::string conexion = pg_conexion_nueva();
    const auto a = abrir_sesion(conexion), b = abrir_sesion(conexion);
    a->BeginTrans(), b->begin_strict();
    EXPECT_TRUE(a->reserve(7) && a->reserve(7));
    EXPECT_FALSE(b->reserve(7));
    EXPECT_TRUE(b->reserve(8));
    a->rollback();
    EXPECT_TRUE(b->reserve(7));
    b->CommitTrans();
}

// Goal: a table that got other columns meanwhile does not spoil the change that reads it first.
TEST(SesionPostgres, ChangedTableAtTheStartOfAChange) {
    const std::string conexion = pg_conexion_nueva();
    const auto a = abrir_sesion(conexion), b = abrir_sesion(conexion);
    ejecutar(*a, "create table t (k integer)");
    EXPECT_EQ(filas(*a, "select * from t"), "");
    ejecutar(*b, "alter table t add column s integer");
    Transaccion tx(*a);
    EXPECT_EQ(filas(*a, "select * from t"), "");
    ejecutar(*a, "insert into t values (1,2)");
    tx.confirmar();
    EXPECT_EQ(filas(*b, "select k, s from t"), "1|2");
}

} // namespace
