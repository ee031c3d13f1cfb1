#include "platform/report/definition.h"

#include "text/letras_utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <pugixml.hpp>
#include <sstream>

namespace quorvel::report {

namespace {

std::string con_linea(const std::filesystem::path& file, int line, const std::string& text) {
    return "Informe " + file.string() + (line > 0 ? ", línea " + std::to_string(line) : std::string()) +
           ": " + text;
}

/// Attributes of one element: every one must be known, every value readable.
class Reader {
public:
    Reader(const std::string& xml, std::filesystem::path file) : xml_(xml), file_(std::move(file)) {}

    [[nodiscard]] int line(std::ptrdiff_t offset) const {
        const auto end = xml_.begin() + std::min<std::ptrdiff_t>(std::max<std::ptrdiff_t>(offset, 0),
                                                                 static_cast<std::ptrdiff_t>(xml_.size()));
        return 1 + static_cast<int>(std::count(xml_.begin(), end, '\n'));
    }
    [[nodiscard]] int line(const pugi::xml_node& n) const { return line(n.offset_debug()); }
    [[noreturn]] void fail(const pugi::xml_node& n, const std::string& text) const {
        throw DefinitionError(file_, line(n), text);
    }
    void only(const pugi::xml_node& n, std::initializer_list<std::string_view> names) const {
        for (const auto& a : n.attributes())
            if (std::find(names.begin(), names.end(), a.name()) == names.end())
                fail(n, std::string("atributo desconocido \"") + a.name() + "\" en <" + n.name() + ">");
    }
    void number(const pugi::xml_node& n, const char* name, double& into, bool positive = false) const {
        const auto a = n.attribute(name);
        if (!a) return;
        const std::string_view v = a.value();
        const auto r = std::from_chars(v.data(), v.data() + v.size(), into);
        if (v.empty() || r.ec != std::errc() || r.ptr != v.data() + v.size())
            fail(n, std::string("\"") + name + "\" no es un número: \"" + std::string(v) + "\"");
        const bool inside = into >= -2000 && into <= 2000; // "nan" is a number to the reader above
        if (!inside || (positive && into <= 0))
            fail(n, std::string("\"") + name + "\" fuera de rango: \"" + std::string(v) + "\"");
    }
    void flag(const pugi::xml_node& n, const char* name, bool& into) const {
        const auto a = n.attribute(name);
        if (!a) return;
        const std::string_view v = a.value();
        if (v != "si" && v != "no") fail(n, std::string("\"") + name + "\" debe ser \"si\" o \"no\"");
        into = v == "si";
    }
    template <class F> auto guarded(const pugi::xml_node& n, F&& f) const {
        try {
            return f();
        } catch (const std::invalid_argument& e) {
            fail(n, e.what());
        }
    }
    void font(const pugi::xml_node& n, Font& into) const {
        if (const auto a = n.attribute("letra")) into.family = a.value();
        number(n, "tamano", into.size, true);
        if (into.size < 1) fail(n, "\"tamano\" fuera de rango: menos de 1 punto");
        flag(n, "negrita", into.bold);
        flag(n, "cursiva", into.italic);
    }

private:
    const std::string& xml_;
    std::filesystem::path file_;
};

Item leer_item(const Reader& r, const pugi::xml_node& n, const Font& base) {
    static const std::map<std::string_view, ItemKind> CLASES{
        {"texto", ItemKind::text}, {"linea", ItemKind::line}, {"caja", ItemKind::box}};
    static const std::map<std::string_view, Align> LADOS{
        {"izquierda", Align::left}, {"centro", Align::center}, {"derecha", Align::right}};
    const auto clase = CLASES.find(n.name());
    if (clase == CLASES.end()) r.fail(n, std::string("elemento desconocido <") + n.name() + ">");
    Item i;
    i.kind = clase->second;
    i.source_line = r.line(n);
    i.font = base;
    if (i.kind == ItemKind::text)
        r.only(n, {"x", "y", "ancho", "alto", "alinear", "letra", "tamano", "negrita", "cursiva", "ajuste",
                   "encoger", "completar", "cuando"});
    else
        r.only(n, {"x", "y", "ancho", "alto", "grosor", "gris", "letra", "tamano", "negrita", "cursiva",
                   "cuando"});
    r.font(n, i.font);
    if (i.kind == ItemKind::text) i.h = line_height(i.font);
    r.number(n, "x", i.x);
    r.number(n, "y", i.y);
    r.number(n, "ancho", i.w);
    r.number(n, "alto", i.h);
    r.number(n, "grosor", i.pen, true);
    double gray = 0;
    r.number(n, "gris", gray);
    i.gray = std::clamp(static_cast<int>(gray), 0, 100);
    r.flag(n, "ajuste", i.wrap);
    r.flag(n, "encoger", i.shrink);
    i.fill = n.attribute("completar").value();
    if (const auto a = n.attribute("alinear")) {
        const auto lado = LADOS.find(a.value());
        if (lado == LADOS.end()) r.fail(n, "\"alinear\" debe ser \"izquierda\", \"centro\" o \"derecha\"");
        i.align = lado->second;
    }
    if (i.kind == ItemKind::text && i.w <= 0) r.fail(n, "<texto> necesita \"ancho\"");
    i.text = r.guarded(n, [&] { return Template::parse(recortar(n.child_value())); });
    i.when = r.guarded(n, [&] { return Condition::parse(n.attribute("cuando").value()); });
    return i;
}

Band leer_banda(const Reader& r, const pugi::xml_node& n, const Font& base) {
    Band b;
    r.only(n, {"alto", "cuando", "posicion"});
    b.source_line = r.line(n);
    if (!n.attribute("alto")) r.fail(n, std::string("<") + n.name() + "> necesita \"alto\"");
    r.number(n, "alto", b.height);
    b.when = r.guarded(n, [&] { return Condition::parse(n.attribute("cuando").value()); });
    const std::string_view posicion = n.attribute("posicion").value();
    if (!posicion.empty() && posicion != "abajo" && posicion != "sigue")
        r.fail(n, "\"posicion\" debe ser \"abajo\" o \"sigue\"");
    b.at_bottom = posicion == "abajo";
    for (const auto& c : n.children())
        if (c.type() == pugi::node_element) b.items.push_back(leer_item(r, c, base));
    return b;
}

void revisar_medidas(const Definition& d) {
    const double body = d.height - d.top - d.bottom - d.page_header.height - d.table_header.height -
                        d.carried_in.height - d.carried_out.height - d.page_footer.height;
    const std::array flowing{&d.detail, &d.totals};
    for (const Band* b : flowing)
        if (b->height > body + 0.001)
            throw DefinitionError(d.file, b->source_line, "la banda no cabe en el alto de la página");
    for (const Band* b : d.bands())
        for (const Item& i : b->items)
            if (d.left + i.x < -0.001 || d.left + i.x + i.w > d.width + 0.001)
                throw DefinitionError(d.file, i.source_line, "el elemento se sale del ancho del papel");
}

} // namespace

DefinitionError::DefinitionError(const std::filesystem::path& file, int at, const std::string& text)
    : std::runtime_error(con_linea(file, at, text)), line(at) {}

Definition parse_definition(const std::string& xml, const std::filesystem::path& file) {
    const Reader r(xml, file);
    pugi::xml_document doc;
    const auto result = doc.load_buffer(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result)
        throw DefinitionError(file, r.line(result.offset),
                              std::string("no es XML válido (") + result.description() + ")");
    const auto root = doc.document_element();
    if (std::string_view(root.name()) != "informe") r.fail(root, "se esperaba <informe>");
    r.only(root, {"ancho", "alto", "izquierda", "arriba", "derecha", "abajo", "desplazar-x", "desplazar-y",
                  "orden", "letra", "tamano"});
    Definition d;
    d.file = file;
    r.number(root, "ancho", d.width, true);
    r.number(root, "alto", d.height, true);
    r.number(root, "izquierda", d.left);
    r.number(root, "arriba", d.top);
    r.number(root, "derecha", d.right);
    r.number(root, "abajo", d.bottom);
    r.number(root, "desplazar-x", d.offset_x);
    r.number(root, "desplazar-y", d.offset_y);
    d.order_by = minusculas(root.attribute("orden").value());
    Font base;
    r.font(root, base);
    const std::map<std::string_view, Band*> bands{
        {"encabezado", &d.page_header}, {"titulos", &d.table_header}, {"vienen", &d.carried_in},
        {"detalle", &d.detail},         {"van", &d.carried_out},      {"totales", &d.totals},
        {"pie", &d.page_footer}};
    for (const auto& n : root.children()) {
        if (n.type() != pugi::node_element) continue;
        const auto band = bands.find(n.name());
        if (band == bands.end()) r.fail(n, std::string("banda desconocida <") + n.name() + ">");
        if (band->second->source_line) r.fail(n, std::string("banda repetida <") + n.name() + ">");
        *band->second = leer_banda(r, n, base);
    }
    revisar_medidas(d);
    return d;
}

Definition read_definition(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in || std::filesystem::is_directory(file))
        throw DefinitionError(file, 0, "no se encuentra o no se puede leer el archivo");
    std::ostringstream text;
    text << in.rdbuf();
    return parse_definition(text.str(), file);
}

void check_fields(const Definition& d, const std::vector<ColumnInfo>& columns) {
    const Data known{columns, {}};
    const auto check = [&](const std::vector<std::string>& names, int line) {
        for (const auto& n : names)
            if (known.column(n) < 0) throw DefinitionError(d.file, line, "campo desconocido \"" + n + "\"");
    };
    if (!d.order_by.empty()) check({d.order_by}, 1);
    for (const Band* b : d.bands()) {
        check(b->when.fields(), b->source_line);
        for (const Item& i : b->items) {
            check(i.text.fields(), i.source_line);
            check(i.when.fields(), i.source_line);
        }
    }
}

Data read_rows(clsConexion& session, const std::string& table, const Definition& d) {
    Data data;
    {
        // the order names a column: it is checked before it becomes part of a statement
        const auto probe = session.NewRecord("select * from " + table + " where secuencia is null");
        check_fields(d, probe->columns());
    }
    const auto rs = session.NewRecord("select * from " + table +
                                      (d.order_by.empty() ? std::string() : " order by " + d.order_by));
    data.columns = rs->columns();
    for (; !rs->eof(); rs->MoveNext()) {
        auto& row = data.rows.emplace_back();
        row.reserve(data.columns.size());
        for (std::size_t i = 0; i < data.columns.size(); ++i) row.push_back(rs->at(i));
    }
    return data;
}

std::vector<std::string> instalar_definiciones(const std::filesystem::path& carpeta,
                                               const std::filesystem::path& origen) {
    std::vector<std::string> copied;
    std::error_code error;
    for (std::filesystem::directory_iterator it(origen, error), end; !error && it != end;
         it.increment(error)) {
        if (it->path().extension() != ".rpt") continue;
        const auto to = carpeta / it->path().filename();
        std::error_code e;
        if (std::filesystem::copy_file(it->path(), to, std::filesystem::copy_options::skip_existing, e))
            copied.push_back(it->path().filename().string());
        else if (e)
            throw std::runtime_error("No se puede copiar el informe " + to.string() + ": " + e.message());
    }
    if (error)
        throw std::runtime_error("No se puede leer la carpeta " + origen.string() + ": " + error.message());
    std::sort(copied.begin(), copied.end());
    return copied;
}

} // namespace quorvel::report
