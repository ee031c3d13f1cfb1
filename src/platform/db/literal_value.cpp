#include "platform/db/literal_value.h"

#include "text/fecha.h"

namespace quorvel {

bool append_iso(std::string_view date_literal, std::string& buffer) {
    const auto f = leer_fecha_mdy(date_literal.substr(1, date_literal.size() - 2));
    if (!f) return false;
    const auto digits = [&buffer](int n, int width) {
        char d[4];
        for (int i = width; i-- > 0; n /= 10) d[i] = static_cast<char>('0' + n % 10);
        buffer.append(d, static_cast<std::size_t>(width));
    };
    digits(anio(*f), 4);
    buffer += '-';
    digits(mes(*f), 2);
    buffer += '-';
    digits(dia(*f), 2);
    return true;
}

void append_text(std::string_view text_literal, std::string& buffer) {
    text_literal = text_literal.substr(1, text_literal.size() - 2);
    for (std::size_t i = 0; i < text_literal.size(); ++i) {
        buffer += text_literal[i];
        if (text_literal[i] == '\'') ++i;
    }
}

} // namespace quorvel
