#include "plain_pg.h"

#include <libpq-fe.h>
#include <stdio.h>

static PGconn* db;

static const char* ACCOUNTS[] = {"501001", "501002", "109001", "201001"};
static const char* PARTIES[] = {"", "", "", "000013"};
static const char* DEBIT[] = {"60000", "40000", "19000", "0"};
static const char* CREDIT[] = {"0", "0", "0", "119000"};
static const char* SEQUENCE[] = {"1", "2", "3", "4"};

static int done(PGresult* r) {
    const int failed = PQresultStatus(r) != PGRES_COMMAND_OK;
    if (failed) fprintf(stderr, "%s", PQerrorMessage(db));
    PQclear(r);
    return failed;
}

int plain_pg_open(const char* conninfo) {
    db = PQconnectdb(conninfo);
    if (PQstatus(db) != CONNECTION_OK) return 1;
    return done(PQprepare(db, "begin", "begin", 0, 0)) || done(PQprepare(db, "commit", "commit", 0, 0)) ||
           done(PQprepare(db, "header",
                          "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,moneda,"
                          "t_debe,t_haber,concepto,usuario,f_ult_modificacion,cotizacion,estado,libro,"
                          "doc_libro,num_ref,fecha_factura,fecha_pago,rut_persona,nombre,apertura,"
                          "monto_neto,monto_exento,codigo_otro_impuesto,tasa_impuesto_otro,activo_fijo,"
                          "codigo_no_recuperable,ifrs,comprobante_adjunto,nro_correlativo,"
                          "iva_activo_fijo) values (1,'01','2024-03-20','002',$1,'PS',119000,119000,"
                          "'Compra de materiales',1,'2024-06-15',1,'P','COMPRAS','FACTURA',$2,"
                          "'2024-03-20',null,'76.418.352-5 ','FERRETERIA EL ROBLE SPA ','0',100000,0,'',"
                          "'','0','','0',$3,1,0)",
                          0, 0)) ||
           done(PQprepare(db, "issued",
                          "update adxemp_doc set ultimo_emitido=$1, f_u_emision='2024-06-15' where empresa=1 "
                          "and documento='002'",
                          0, 0)) ||
           done(PQprepare(db, "old",
                          "delete from ctdquorvel where empresa=1 and subsistema='01' and "
                          "f_comp='2024-03-20' and documento='002' and num_docum=$1",
                          0, 0)) ||
           done(PQprepare(db, "line",
                          "insert into ctdquorvel values (1,'01','2024-03-20','002',$1,$2,$3,$4,$5,$6,"
                          "'Compra de materiales','','','','','')",
                          0, 0));
}

static int run(const char* statement, int count, const char* const* values) {
    return done(PQexecPrepared(db, statement, count, values, 0, 0, 0));
}

int plain_pg_save(int number) {
    char text[16], ref[24];
    snprintf(text, sizeof text, "%d", number);
    snprintf(ref, sizeof ref, "9%d ", number);
    const char* header[] = {text, ref, text};
    const char* key[] = {text};
    int failed = run("begin", 0, 0) | run("header", 3, header) | run("issued", 1, key) | run("old", 1, key);
    for (int i = 0; i < 4; ++i) {
        const char* line[] = {text, SEQUENCE[i], ACCOUNTS[i], PARTIES[i], DEBIT[i], CREDIT[i]};
        failed |= run("line", 6, line);
    }
    return failed | run("commit", 0, 0);
}

void plain_pg_close(void) { PQfinish(db); }
