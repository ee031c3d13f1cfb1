#pragma once
#include "platform/report/plantilla.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel::report {

/// A definition that cannot be used: what() names the file and the line, in Spanish.
class DefinitionError : public std::runtime_error {
public:
    DefinitionError(const std::filesystem::path& file, int line, const std::string& text);
    int line;
};

struct Font {
    std::string family = "DejaVu Sans";
    double size = 9; ///< points
    bool bold = false, italic = false;
    friend bool operator==(const Font&, const Font&) = default;
};
/// Height of one line of text in millimetres.
[[nodiscard]] inline double line_height(const Font& f) { return f.size * 25.4 / 72 * 1.2; }

enum class Align { left, center, right };
enum class ItemKind { text, line, box };

/// Something at a place of its band. Millimetres; x from the left margin, y from the band's top.
struct Item {
    ItemKind kind = ItemKind::text;
    int source_line = 0;
    double x = 0, y = 0, w = 0, h = 0; ///< a line runs from (x, y) to (x + w, y + h)
    double pen = 0.2;                  ///< line width
    int gray = 0;                      ///< percent of black: inside of a box (0 open), a line (0 black)
    Align align = Align::left;
    Font font;
    bool wrap = false;   ///< long texts go on in further lines and the band grows
    bool shrink = false; ///< a smaller size rather than a cut or a grown band
    std::string fill;    ///< fills the rest of the last line, against later additions
    Template text;
    Condition when;
};

struct Band {
    double height = 0;
    int source_line = 0;
    Condition when;
    bool at_bottom = false; ///< totals: at the foot of the page instead of behind the last row
    std::vector<Item> items;
};

/// What an .rpt file says. A missing band takes no room.
struct Definition {
    std::filesystem::path file;
    double width = 215.9, height = 279.4; ///< paper
    double left = 15, top = 12, right = 15, bottom = 12;
    double offset_x = 0, offset_y = 0; ///< moves everything, for pre-printed paper
    std::string order_by;
    Band page_header, table_header, carried_in, detail, carried_out, totals, page_footer;
    [[nodiscard]] std::vector<const Band*> bands() const {
        return {&page_header, &table_header, &carried_in, &detail, &carried_out, &totals, &page_footer};
    }
};

/// Reads a definition. @throws DefinitionError; a missing file too, with its path
[[nodiscard]] Definition read_definition(const std::filesystem::path& file);
/// The same from a text. @param file only named in errors
[[nodiscard]] Definition parse_definition(const std::string& xml, const std::filesystem::path& file);
/// Every field must be a column of the staging table. @throws DefinitionError
void check_fields(const Definition& d, const std::vector<ColumnInfo>& columns);
/// Reads the staging table in the definition's order and checks the definition against it.
/// @throws DefinitionError, ErrorSesion
[[nodiscard]] Data read_rows(clsConexion& session, const std::string& table, const Definition& d);

/// Puts the definitions beside the report database; those that are there stay as they are.
/// @return names of the copied files. @throws std::runtime_error in Spanish
std::vector<std::string> instalar_definiciones(const std::filesystem::path& carpeta,
                                               const std::filesystem::path& origen);

} // namespace quorvel::report
