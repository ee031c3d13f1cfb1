-- Accounting database on SQLite. Text compares without its trailing blanks (collate rtrim), as the
-- programs that share these tables expect; amounts are whole pesos.

-- Host: companies and users

create table admempresa (
    empresa   integer not null primary key,
    n_empresa text collate rtrim not null,
    rut       text collate rtrim not null default '',
    direccion text collate rtrim not null default '',
    giro      text collate rtrim not null default ''
);

create table admusuario (
    usuario   integer not null primary key,
    n_usuario text collate rtrim not null,
    alias     integer not null default 1, -- 2: sees only the vouchers written last by this user
    permiso   text collate rtrim not null default '11111'
);

-- Vouchers. What another program leaves null counts as empty, or as 0; keys, debits and credits are never null.

create table ctcquorvel (
    empresa               integer not null,
    subsistema            text collate rtrim not null default '01',
    f_comp                date not null,
    documento             text collate rtrim not null,
    num_docum             text collate rtrim not null,
    moneda                text collate rtrim default '',
    t_debe                bigint not null default 0,
    t_haber               bigint not null default 0,
    concepto              text collate rtrim default '',
    usuario               integer not null default 0,
    f_ult_modificacion    date,
    cotizacion            numeric not null default 1,
    estado                text collate rtrim not null default 'P',
    libro                 text collate rtrim default '',
    doc_libro             text collate rtrim default '',
    num_ref               text collate rtrim default '',
    fecha_factura         date,
    fecha_pago            date,
    rut_persona           text collate rtrim default '',
    nombre                text collate rtrim default '',
    apertura              text collate rtrim default '0',
    monto_neto            bigint default 0,
    monto_exento          bigint default 0,
    codigo_otro_impuesto  text collate rtrim default '',
    tasa_impuesto_otro    text collate rtrim default '',
    activo_fijo           text collate rtrim default '0',
    codigo_no_recuperable text collate rtrim default '',
    ifrs                  text collate rtrim default '0',
    comprobante_adjunto   integer default 0,
    nro_correlativo       integer default 0,
    iva_activo_fijo       bigint default 0,
    bloqueo_usuario       integer default 0,
    -- null means that the voucher has no cheque: these never get a default
    cheque                text collate rtrim,
    banco                 text collate rtrim,
    cuenta                text collate rtrim,
    fecha_cheque          date,
    beneficiario          text collate rtrim,
    nominativo            integer,
    cruzado               integer
);

create unique index ctcquorvel_clave on ctcquorvel (empresa, f_comp, documento, num_docum);
-- next voucher number of a kind and year; the cast inherits the column's collation, without which
-- the index would not be read in its order
create index ctcquorvel_numero on ctcquorvel (empresa, documento, cast(strftime('%Y', f_comp) as integer), cast(num_docum as integer) collate rtrim);
-- next correlative of a book and month; search by book
create index ctcquorvel_correlativo on ctcquorvel (empresa, libro, cast(strftime('%Y', f_comp) as integer), cast(strftime('%m', f_comp) as integer), nro_correlativo);
-- search by counterpart in the order of the list
create index ctcquorvel_contraparte on ctcquorvel (rut_persona, empresa, f_comp, documento, num_docum);
-- list of counterparts
create index ctcquorvel_nombre on ctcquorvel (nombre, rut_persona);
-- duplicate document, search by document number
create index ctcquorvel_referencia on ctcquorvel (empresa, num_ref, rut_persona);
create index ctcquorvel_bloqueo on ctcquorvel (empresa, bloqueo_usuario);
create index ctcquorvel_adjunto on ctcquorvel (comprobante_adjunto);
-- list of bank accounts and next cheque; few vouchers carry a cheque
create index ctcquorvel_cheque on ctcquorvel (banco, cuenta, cheque) where cuenta is not null;

create table ctdquorvel (
    empresa              integer not null,
    subsistema           text collate rtrim not null default '01',
    f_comp               date not null,
    documento            text collate rtrim not null,
    num_docum            text collate rtrim not null,
    secuencia            integer not null,
    centro               text collate rtrim not null,
    auxiliar             text collate rtrim default '',
    debe_nacional        bigint not null default 0,
    haber_nacional       bigint not null default 0,
    glosa                text collate rtrim default '',
    centro2              text collate rtrim default '',
    conciliado           text collate rtrim default '',
    num_ref              text collate rtrim default '',
    codigo_otro_impuesto text collate rtrim default '',
    tasa_impuesto_otro   text collate rtrim default '',
    primary key (empresa, f_comp, documento, num_docum, secuencia)
) without rowid;

-- sums of a year per account and auxiliary without touching the lines themselves
create index ctdquorvel_sumas
    on ctdquorvel (empresa, f_comp, centro, auxiliar, debe_nacional, haber_nacional, subsistema, num_ref);

create table ctdcomprad (
    comprobante_adjunto integer not null,
    correlativo         integer not null,
    nombre              text collate rtrim not null default ''
);

create index ctdcomprad_conjunto on ctdcomprad (comprobante_adjunto, correlativo);
create index ctdcomprad_correlativo on ctdcomprad (correlativo);

-- Configuration

create table ctmconfigu (
    empresa                integer not null,
    anio                   integer not null,
    f_digi_inicial         date,
    f_digi_final           date,
    f_comp_cierre          date,
    documento_cierre       text collate rtrim,
    num_docum_cierre       text collate rtrim,
    factura_cobrar         text collate rtrim,
    boleta_cobrar          text collate rtrim,
    factura_pagar          text collate rtrim,
    boleta_pagar           text collate rtrim,
    iva                    text collate rtrim,
    otros_impuestos        text collate rtrim,
    iva_compra             text collate rtrim,
    otros_impuestos_compra text collate rtrim,
    honorarios_pagar       text collate rtrim,
    retencion_seg_cat      text collate rtrim,
    elaborado              text collate rtrim,
    revisado               text collate rtrim,
    aprobado               text collate rtrim,
    centro_gan             text collate rtrim,
    centro_per             text collate rtrim,
    primary key (empresa, anio)
);

create table admdocumen (
    documento   text collate rtrim not null primary key,
    n_documento text collate rtrim not null default ''
);

create table adxdoc_sub (
    subsistema text collate rtrim not null,
    documento  text collate rtrim not null,
    primary key (subsistema, documento)
);

create table adxemp_doc (
    empresa        integer not null,
    documento      text collate rtrim not null,
    ultimo_emitido text collate rtrim not null default '0',
    f_u_emision    date,
    primary key (empresa, documento)
);

create table admsubsist (
    subsistema   text collate rtrim not null primary key,
    n_subsistema text collate rtrim not null default ''
);

create table admmonedas (
    moneda   text collate rtrim not null primary key,
    n_moneda text collate rtrim not null default ''
);

create table ctmotroimp (
    otro_impuesto text collate rtrim not null primary key,
    descripcion   text collate rtrim not null default '',
    tasa          numeric not null default 0
);

-- Chart of accounts and cost centres

create table ctmgcuenta (
    g_cuenta       text collate rtrim not null primary key,
    n_g_cuenta     text collate rtrim not null default '',
    transitorio    text collate rtrim not null default '0',
    formato_centro text collate rtrim not null default '9.99.999',
    num_nivel      integer not null default 3,
    longitud       integer not null default 6
);

create table ctmcentros (
    centro       text collate rtrim not null primary key,
    n_centro     text collate rtrim not null default '',
    g_cuenta     text collate rtrim not null default '',
    activo       text collate rtrim not null default '1',
    req_auxiliar text collate rtrim not null default '0'
);

create index ctmcentros_grupo on ctmcentros (g_cuenta, centro);

create table ctmgcuentc (
    g_cuenta       text collate rtrim not null primary key,
    n_g_cuenta     text collate rtrim not null default '',
    transitorio    text collate rtrim not null default '0',
    formato_centro text collate rtrim not null default '9.99.999',
    num_nivel      integer not null default 3,
    longitud       integer not null default 6
);

create table ctmcentroc (
    centro       text collate rtrim not null primary key,
    n_centro     text collate rtrim not null default '',
    g_cuenta     text collate rtrim not null default '',
    activo       text collate rtrim not null default '1',
    req_auxiliar text collate rtrim not null default '0'
);

create index ctmcentroc_grupo on ctmcentroc (g_cuenta, centro);

-- Auxiliaries and persons

create table ctmtipoaux (
    tipo_aux   text collate rtrim not null primary key,
    n_tipo_aux text collate rtrim not null default '',
    sistema    text collate rtrim not null default '0',
    activo     text collate rtrim not null default '1'
);

create table ctxaux_cod (
    auxiliar   text collate rtrim not null primary key,
    n_auxiliar text collate rtrim not null default '',
    tipo       text collate rtrim not null default '',
    activo     text collate rtrim not null default '1',
    rut        text collate rtrim not null default ''
);

create index ctxaux_cod_rut on ctxaux_cod (rut);
create index ctxaux_cod_tipo on ctxaux_cod (tipo, auxiliar);
create index ctxaux_cod_activo on ctxaux_cod (activo, auxiliar);

create table admpersona (
    persona     integer not null primary key,
    n_persona   text collate rtrim not null default '',
    telefonos   text collate rtrim not null default '',
    ciudad      text collate rtrim not null default '',
    provincia   text collate rtrim not null default '',
    direccion   text collate rtrim not null default '',
    cedula_ruc  text collate rtrim not null default '',
    observacion text collate rtrim not null default '',
    tipo        text collate rtrim not null default '',
    activo      text collate rtrim not null default '1'
);

create index admpersona_rut on admpersona (cedula_ruc);

-- Balances per month, kept by the posting of the suite

create table ctmsdcenth (
    empresa integer not null,
    anio    integer not null,
    centro  text collate rtrim not null,
    debe1 bigint default 0, haber1 bigint default 0,
    debe2 bigint default 0, haber2 bigint default 0,
    debe3 bigint default 0, haber3 bigint default 0,
    debe4 bigint default 0, haber4 bigint default 0,
    debe5 bigint default 0, haber5 bigint default 0,
    debe6 bigint default 0, haber6 bigint default 0,
    debe7 bigint default 0, haber7 bigint default 0,
    debe8 bigint default 0, haber8 bigint default 0,
    debe9 bigint default 0, haber9 bigint default 0,
    debe10 bigint default 0, haber10 bigint default 0,
    debe11 bigint default 0, haber11 bigint default 0,
    debe12 bigint default 0, haber12 bigint default 0,
    primary key (empresa, anio, centro)
);

create table ctmsdmayor (
    empresa  integer not null,
    anio     integer not null,
    centro   text collate rtrim not null,
    auxiliar text collate rtrim not null default '',
    debe1 bigint default 0, haber1 bigint default 0,
    debe2 bigint default 0, haber2 bigint default 0,
    debe3 bigint default 0, haber3 bigint default 0,
    debe4 bigint default 0, haber4 bigint default 0,
    debe5 bigint default 0, haber5 bigint default 0,
    debe6 bigint default 0, haber6 bigint default 0,
    debe7 bigint default 0, haber7 bigint default 0,
    debe8 bigint default 0, haber8 bigint default 0,
    debe9 bigint default 0, haber9 bigint default 0,
    debe10 bigint default 0, haber10 bigint default 0,
    debe11 bigint default 0, haber11 bigint default 0,
    debe12 bigint default 0, haber12 bigint default 0,
    primary key (empresa, anio, centro, auxiliar)
);

-- Sales invoices

create table ftcfactura (
    empresa       integer not null,
    sucursal      text collate rtrim not null default '1',
    factura       text collate rtrim not null,
    proforma      text collate rtrim not null default '',
    fecha         date,
    cliente       integer,
    moneda        text collate rtrim not null default 'PS',
    cotización    numeric not null default 1,
    descuento     numeric not null default 0,
    descuento_esp bigint not null default 0,
    iva           bigint not null default 0,
    valor_total   bigint not null default 0,
    f_comp        date,
    documento     text collate rtrim not null default '',
    num_docum     text collate rtrim not null default ''
);

create unique index ftcfactura_clave on ftcfactura (empresa, factura);
create index ftcfactura_comprobante on ftcfactura (empresa, f_comp, documento, num_docum);

create table ftdfactura (
    empresa     integer not null,
    factura     text collate rtrim not null,
    producto    text collate rtrim not null,
    observacion text collate rtrim not null default '',
    cantidad    numeric not null default 0,
    precio      numeric not null default 0,
    primary key (empresa, factura, producto)
);

-- History: every version of a voucher as it was stored, each with the sum of the one before it. A company without
-- a row in ctmhistoria keeps none and protects nothing.

create table ctmhistoria (
    empresa integer not null primary key,
    numero  bigint not null default 0,  -- of the last version
    momento text collate rtrim not null default '', -- its time, UTC
    huella  text collate rtrim not null default '', -- its sum
    guarda  integer not null default 1, -- versions are written
    cerrado integer not null default 0, -- closed years and locked months take no change
    meses   text collate rtrim not null default ''  -- locked months, '2024-03 2024-04 '
);

create table ctdhistoria (
    empresa   integer not null,
    numero    bigint not null,
    momento   text collate rtrim not null,
    anterior  text collate rtrim not null, -- sum of version numero - 1
    usuario   integer not null,
    maquina   text collate rtrim not null,
    operacion text collate rtrim not null,
    grupo     text collate rtrim not null, -- of vouchers that one piece of work wrote
    clave     text collate rtrim not null, -- '2024-03-20|001|01|15', empty for what concerns no voucher
    cabecera  text collate rtrim not null, -- columns of the voucher's header, a JSON list
    lineas    text collate rtrim not null, -- the same of each line, a list of lists
    adjuntos  text collate rtrim not null, -- names of the attached files
    sumas     text collate rtrim not null, -- their SHA-256 when it was written
    primary key (empresa, numero)
);

create index ctdhistoria_clave on ctdhistoria (empresa, clave, numero);
-- vouchers that were taken away
create index ctdhistoria_quitados on ctdhistoria (empresa, numero) where operacion in ('eliminado','cortado');
create index ctdhistoria_grupo on ctdhistoria (empresa, grupo, numero) where grupo<>'';
