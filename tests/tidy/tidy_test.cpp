// Goal: the structure of the code stays what it is. Method: the source tree is read and measured; what
// exceeds a limit today is listed by name, and the list may only shrink: an entry that is no longer needed
// fails too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

/// A source file twice: as it stands and with comments and the inside of texts blanked, line ends kept.
struct Source {
    std::string path, text, code;
    [[nodiscard]] bool in(std::string_view folder) const { return path.starts_with(folder); }
};

/// Length of the literal or comment that starts here; 0 when none does.
std::size_t opaque(const std::string& t, std::size_t at) {
    const auto until = [&](std::string_view end, std::size_t from) {
        const std::size_t found = t.find(end, from);
        return (found == std::string::npos ? t.size() : found + end.size()) - at;
    };
    if (t.compare(at, 2, "//") == 0) return until("\n", at) - 1;
    if (t.compare(at, 2, "/*") == 0) return until("*/", at + 2);
    if (t.compare(at, 2, "R\"") == 0) {
        const std::size_t open = t.find('(', at);
        return until(")" + t.substr(at + 2, open - at - 2) + "\"", open);
    }
    const bool separator = at > 0 && std::isdigit(static_cast<unsigned char>(t[at - 1])) != 0;
    if (t[at] != '"' && (t[at] != '\'' || separator)) return 0; // 1'000'000
    std::size_t end = at + 1;
    while (end < t.size() && t[end] != t[at]) end += t[end] == '\\' ? 2 : 1;
    return end + 1 - at;
}

std::string without_texts(const std::string& text) {
    std::string code = text;
    for (std::size_t i = 0; i < code.size();) {
        const std::size_t n = opaque(text, i);
        for (std::size_t k = i; k < std::min(i + n, code.size()); ++k)
            if (code[k] != '\n') code[k] = ' ';
        i += std::max<std::size_t>(n, 1);
    }
    return code;
}

const std::vector<Source>& sources() {
    static const std::vector<Source> all = [] {
        std::vector<Source> found;
        const fs::path root = QUORVEL_SOURCE;
        for (const char* const folder : {"src", "tests", "bench", "docs"})
            for (const auto& e : fs::recursive_directory_iterator(root / folder)) {
                const std::string kind = e.path().extension().string();
                if (kind != ".cpp" && kind != ".h" && kind != ".c") continue;
                std::ifstream in(e.path(), std::ios::binary);
                std::string text{std::istreambuf_iterator<char>(in), {}};
                found.push_back({fs::relative(e.path(), root).string(), text, without_texts(text)});
            }
        std::sort(found.begin(), found.end(),
                  [](const Source& a, const Source& b) { return a.path < b.path; });
        return found;
    }();
    return all;
}

void compare(const Names& found, const Names& listed, const char* rule) {
    for (const std::string& n : found) EXPECT_TRUE(listed.count(n) != 0) << rule << ": " << n;
    for (const std::string& n : listed)
        EXPECT_TRUE(found.count(n) != 0) << n << " keeps the rule now: take it off the list of: " << rule;
}

/// A block between braces: what stands before it, where, and how deep among classes and namespaces.
struct Block {
    enum Kind { scope, function, other } kind;
    std::string head;
    std::size_t begin, end = 0;
};

Block::Kind kind_of(const std::string& head, bool inside_scope) {
    static const std::regex scope("(^|[^a-z_])(namespace|class|struct|union|enum|extern)([^a-zA-Z_(]|$)");
    if (head.find('(') == std::string::npos || head.find("extern") == 0)
        return inside_scope && std::regex_search(head, scope) ? Block::scope : Block::other;
    return inside_scope ? Block::function : Block::other;
}

/// Functions of a file, members of classes included; what is inside a function belongs to it.
std::vector<Block> functions(const std::string& code) {
    std::vector<Block> open, done;
    std::string head;
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i];
        if (c == '{') {
            const bool value = i == 0 || code[i - 1] != ' ' || head.ends_with("= ") || head.ends_with(", ");
            const bool inside =
                std::all_of(open.begin(), open.end(), [](const Block& b) { return b.kind == Block::scope; });
            open.push_back({value ? Block::other : kind_of(head, inside), value ? "{" : head, i});
            if (!value) head.clear();
        } else if (c == '}' && !open.empty()) {
            open.back().end = i;
            const bool value = open.back().head == "{";
            if (open.back().kind == Block::function) done.push_back(open.back());
            open.pop_back();
            if (!value) head.clear();
        } else if (c == ';') {
            head.clear();
        } else if (std::isspace(static_cast<unsigned char>(c)) == 0) {
            head += c;
        } else if (!head.empty() && !head.ends_with(' ')) {
            head += ' ';
        }
    }
    return done;
}

/// "name", "Class::name" or the two names of a test.
std::string name_of(const std::string& head) {
    static const std::regex name(R"((TEST\w*\([^)]*\))|([~\w:]+) ?\()");
    std::smatch m;
    if (!std::regex_search(head, m, name)) return head;
    return m[1].matched ? m[1].str() : m[2].str();
}

long lines(std::string_view text) { return std::count(text.begin(), text.end(), '\n'); }

std::size_t letters(std::string_view line) {
    return static_cast<std::size_t>(
        std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// Files for which the test holds.
Names files_where(const std::function<bool(const Source&)>& test) {
    Names found;
    for (const Source& s : sources())
        if (test(s)) found.insert(s.path);
    return found;
}

bool holds(const std::string& text, const char* pattern) {
    return std::regex_search(text, std::regex(pattern, std::regex::icase));
}

/// Statements of a body, one for each control structure with all that it governs.
int statements(const std::string& body) {
    int count = 0, depth = 0;
    for (std::size_t i = 0; i < body.size(); ++i) {
        const char c = body[i];
        depth += (c == '(' || c == '{' || c == '[') - (c == ')' || c == '}' || c == ']');
        const std::size_t next = body.find_first_not_of(" \n", i + 1);
        const bool ends =
            c == ';' || (c == '}' && (next == std::string::npos ||
                                      (body[next] != ';' && body[next] != ')' && body[next] != ',')));
        if (depth == 0 && ends) ++count;
    }
    return count;
}

} // namespace

TEST(Tidy, ReadsTheCodeAsItIsMeant) {
    const std::string code = "namespace n {\nint Uno::dos(int a = 0) {\n  if (a) { x = {1}; }\n}\n"
                             "struct S {\n  S() : a{1}, b{2} {\n  }\n  int a = 3;\n};\n"
                             "constexpr T t[] = {\n  f(1),\n};\nTEST(A, b) {\n}\n}\n";
    std::string names;
    for (const Block& b : functions(code)) names += name_of(b.head) + ";";
    EXPECT_EQ(names, "Uno::dos;S;TEST(A, b);");
    EXPECT_EQ(without_texts("a // {\nb\"{\\\"\" U'c' 1'0"), "a     \nb      U    1'0");
    EXPECT_EQ(statements(" a(b, [] { c; d; }); if (x) e; for (;;) { f; } "), 3);
    EXPECT_GT(sources().size(), 200U);
}

TEST(Tidy, FunctionsFilesAndLinesStayShort) {
    Names long_functions, long_lines, tabs;
    for (const Source& s : sources()) {
        for (const Block& b : functions(s.code))
            if (lines(std::string_view(s.text).substr(b.begin, b.end - b.begin)) >= 70)
                long_functions.insert(s.path + " " + name_of(b.head));
        std::istringstream in(s.text);
        for (std::string line; std::getline(in, line);)
            if (letters(line) > 110) long_lines.insert(s.path);
        if (s.text.find('\t') != std::string::npos) tabs.insert(s.path);
    }
    compare(long_functions, {}, "a function has at most 70 lines");
    compare(long_lines, {}, "a line has at most 110 letters");
    compare(tabs, {}, "no tabs");
    compare(files_where([](const Source& s) { return lines(s.text) > (s.in("src/screen") ? 400 : 600); }), {},
            "a file has at most 600 lines, 400 in src/screen");
}

/// What each folder may include besides itself; a folder within it counts as it. Arrows point down only.
const std::map<std::string, std::string> EDGES{
    {"text", ""},
    {"platform/db", "text"},
    {"platform/db/sqlite", "text platform/db platform/files"},
    {"platform/db/postgres", "text platform/db"},
    {"platform/db/engines", "text platform/db platform/db/sqlite platform/db/postgres"},
    {"platform/files", "text"},
    {"platform/report", "text platform/db"},
    {"platform/ui", "text platform/db platform/files"},
    {"historia", "text platform/db platform/files"},
    {"voucher", "text platform/db historia"},
    {"assistants", "text platform/db voucher"},
    {"registro", "text platform/db platform/files historia voucher assistants"},
    {"yearend", "text platform/db voucher"},
    {"interchange", "text platform/db platform/files voucher"},
    {"libros", "text platform/db voucher"},
    {"empresa", "text platform/db platform/files"},
    {"catalogos", "text platform/db voucher assistants empresa"},
    {"screen",
     "text platform/db platform/files platform/report platform/ui voucher assistants yearend interchange "
     "registro"},
    {"host", "text platform/db screen"},
    {"driver", "text platform/report platform/ui screen host"},
    {"dbtools", "text platform/db platform/db/postgres platform/db/sqlite platform/files historia voucher"},
    {"demo", "text platform/db voucher dbtools"},
    {"oficina", "text platform/db voucher assistants interchange dbtools"},
    {"qt", "text platform/files platform/ui platform/report"},
    {"app", "text platform/db platform/files platform/report historia voucher yearend screen host libros "
            "empresa catalogos dbtools demo qt"},
    {"demo_run", "platform/ui historia voucher screen qt app dbtools demo"},
    {"cli", "text platform/db platform/files platform/report voucher assistants registro interchange screen "
            "driver qt "
            "app dbtools demo "
            "oficina demo_run"},
};

std::string folder_of(const std::string& path) {
    std::string folder = path.substr(0, path.rfind('/'));
    while (!EDGES.contains(folder) && folder.find('/') != std::string::npos) folder.erase(folder.rfind('/'));
    return folder;
}

TEST(Tidy, FoldersIncludeOnlyWhatStandsBelowThem) {
    static const std::regex INCLUDE(R"re(#include "([^"]+)")re");
    Names wrong, unused;
    for (const auto& [folder, below] : EDGES) {
        std::istringstream words(below);
        for (std::string word; words >> word;) unused.insert(folder + " -> " + word);
    }
    for (const Source& s : sources()) {
        if (!s.in("src/")) continue;
        const std::string from = folder_of(s.path.substr(4));
        for (std::sregex_iterator i(s.text.begin(), s.text.end(), INCLUDE), end; i != end; ++i) {
            const std::string to = folder_of((*i)[1]), edge = from + " -> " + to;
            const auto known = EDGES.find(from);
            const bool allowed =
                known != EDGES.end() && (' ' + known->second + ' ').find(' ' + to + ' ') != std::string::npos;
            if (to != from && !allowed) wrong.insert(s.path + " includes " + to);
            unused.erase(edge);
        }
    }
    compare(wrong, {}, "a folder includes only what stands below it");
    compare(unused, {}, "an arrow that nobody uses goes");
}

/// Types that a file declares for others, and functions that a header does, each with its namespace.
Names declared(const Source& s) {
    static const std::regex space(R"(namespace ([\w:]+) \{)");
    static const std::regex type(
        R"((?:template <.*> )?(?:class|struct|enum class|enum) (\w+)[^;]*(?:\{.*)?)");
    static const std::regex alias(R"(using (\w+) =.*)");
    static const std::regex function(R"((?:\[\[\w+\]\] |[\w:<>,&*]+ )+[&*]?(\w+)\(.*)");
    Names names;
    std::string where;
    bool own = false;
    std::istringstream in(s.code);
    std::smatch m;
    for (std::string line; std::getline(in, line);) {
        if (std::regex_match(line, m, space)) where = m[1];
        if (line == "namespace {") own = true;
        if (line.starts_with("}") && own && line.find(';') == std::string::npos && line.size() > 1)
            own = false;
        if (own || line.starts_with(' ') || line.starts_with('}')) continue;
        if (std::regex_match(line, m, type) || std::regex_match(line, m, alias) ||
            (s.path.ends_with(".h") && std::regex_match(line, m, function)))
            names.insert(where + "::" + std::string(m[1]));
    }
    return names;
}

TEST(Tidy, OneWordIsOneThing) {
    std::map<std::string, Names> where;
    for (const Source& s : sources())
        if (s.in("src/"))
            for (const std::string& name : declared(s)) where[name].insert(folder_of(s.path.substr(4)));
    Names twice;
    for (const auto& [name, folders] : where)
        if (folders.size() > 1) twice.insert(name);
    compare(twice, {}, "a name of a namespace is declared in one folder");
}

TEST(Tidy, EachThingHasItsPlace) {
    compare(files_where([](const Source& s) {
                constexpr const char* WINDOWS[] = {
                    "src/qt",           "src/app",  "src/demo_run", "src/cli/main.cpp", "src/cli/imprimir",
                    "src/cli/reportar", "tests/qt", "tests/app",    "tests/tidy",       "bench"};
                return holds(s.text, "#include <Q") &&
                       std::ranges::none_of(WINDOWS, [&](const char* w) { return s.in(w); });
            }),
            {}, "only windows and what prints knows Qt");
    compare(files_where([](const Source& s) {
                return (s.in("src/screen") || s.in("src/qt")) &&
                       holds(s.text, R"re("[^"\n]*\b(select|insert|update|delete from) )re");
            }),
            {"src/screen/consultas/consultas.cpp", "src/screen/consultas/formas_codigo.cpp"},
            "forms and windows hold no statements; what fills lists stands in these files");
    compare(files_where([](const Source& s) {
                return s.in("src") &&
                       holds(s.code, R"(QMessageBox::\w+\(|QMessageBox \w+[({]|[.>]message\([^)])");
            }),
            {"src/app/avisos.cpp", "src/platform/ui/form.cpp", "src/qt/QtEscritorio.cpp",
             "src/qt/report/PreviewWindow.cpp"},
            "a message goes through the form's notices");
    compare(files_where([](const Source& s) { return s.in("src/screen") && holds(s.code, R"(\bcatch \()"); }),
            {"src/screen/asistentes/frmAsistente.cpp", "src/screen/asistentes/partes.cpp",
             "src/screen/carga.cpp", "src/screen/papeles/frmcheque.cpp"},
            "exceptions of an event are caught in the form base");
    compare(files_where([](const Source& s) {
                return s.in("src") &&
                       holds(s.text, R"(#include <Q(FileDialog|FileSystemModel|MimeDatabase)>)");
            }),
            {"src/qt/file_dialog.cpp"}, "files are chosen in the dialog that never looks into one");
    compare(files_where([](const Source& s) { return s.in("src") && holds(s.code, R"(sqlite3_open\w*\()"); }),
            {"src/platform/db/sqlite/open_file.cpp"}, "database files are opened where their locks are kept");
}

/// Without the macro a window's search for children of a class takes any of its base's.
TEST(Tidy, WhatIsSoughtAmongChildrenCanBeTold) {
    static const std::regex sought(R"(findChild(?:ren)?<(?:\w+::)*([A-PR-Z]\w+)\*>)");
    static const std::regex told(R"(class (\w+)[^;{}]*\{\s*Q_OBJECT)");
    Names wanted, known;
    for (const Source& s : sources()) {
        for (std::sregex_iterator i(s.code.begin(), s.code.end(), sought), end; i != end; ++i)
            wanted.insert((*i)[1]);
        for (std::sregex_iterator i(s.code.begin(), s.code.end(), told), end; i != end; ++i)
            known.insert((*i)[1]);
    }
    std::erase_if(wanted, [&](const std::string& name) { return known.contains(name); });
    compare(wanted, {}, "a class that is sought among children says Q_OBJECT");
}

TEST(Tidy, EventProceduresOfTheVoucherScreenAreThreeStatements) {
    Names found;
    for (const Source& s : sources()) {
        if (s.path != "src/screen/frmQuorvel.cpp") continue;
        for (const Block& b : functions(s.code)) {
            const std::string body = s.code.substr(b.begin + 1, b.end - b.begin - 1), name = name_of(b.head);
            if (name.find("Form_") != std::string::npos && statements(body) > 3) found.insert(name);
            for (std::size_t at = 0; (at = body.find("+= [", at)) != std::string::npos; ++at) {
                const std::size_t open = body.find('{', at), end = body.find("\n    };", open);
                const std::size_t line_end = body.find('\n', open);
                const std::size_t close = body.rfind('}', std::min(line_end, end));
                const bool one_line = close != std::string::npos && close > open && close < line_end;
                const std::string lambda = body.substr(open + 1, (one_line ? close : end) - open - 1);
                if (statements(lambda) > 3) found.insert(body.substr(at > 30 ? at - 30 : 0, 30));
            }
        }
    }
    compare(found, {}, "an event procedure has three statements");
}
