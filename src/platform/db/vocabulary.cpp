#include "platform/db/vocabulary.h"

#include <algorithm>
#include <array>

namespace quorvel::vocabulary {
namespace {

using Words = std::string_view;
constexpr std::array KEYWORDS{
    Words{"all"},     Words{"and"},    Words{"as"},      Words{"asc"},        Words{"between"},
    Words{"by"},      Words{"case"},   Words{"collate"}, Words{"constraint"}, Words{"create"},
    Words{"default"}, Words{"delete"}, Words{"desc"},    Words{"distinct"},   Words{"drop"},
    Words{"else"},    Words{"end"},    Words{"exists"},  Words{"from"},       Words{"group"},
    Words{"having"},  Words{"in"},     Words{"index"},   Words{"inner"},      Words{"insert"},
    Words{"into"},    Words{"is"},     Words{"join"},    Words{"key"},        Words{"left"},
    Words{"like"},    Words{"limit"},  Words{"not"},     Words{"null"},       Words{"on"},
    Words{"or"},      Words{"order"},  Words{"outer"},   Words{"primary"},    Words{"select"},
    Words{"set"},     Words{"table"},  Words{"then"},    Words{"union"},      Words{"unique"},
    Words{"update"},  Words{"values"}, Words{"when"},    Words{"where"},      Words{"with"}};
static_assert(std::is_sorted(KEYWORDS.begin(), KEYWORDS.end()));
constexpr std::array OPENING{Words{"and"}, Words{"having"}, Words{"not"},  Words{"on"},
                             Words{"or"},  Words{"set"},    Words{"where"}};
constexpr std::array ENDING{Words{"and"},   Words{"group"}, Words{"having"}, Words{"inner"},
                            Words{"join"},  Words{"left"},  Words{"limit"},  Words{"or"},
                            Words{"order"}, Words{"union"}, Words{"where"}};
constexpr std::array COMPARISONS{Words{"<"}, Words{"<="}, Words{"<>"}, Words{"="},
                                 Words{">"}, Words{">="}, Words{"!="}};
constexpr std::array TEXTS{Words{"coalesce"}, Words{"ifnull"}, Words{"max"}, Words{"min"}, Words{"nullif"}};
constexpr std::array PLAIN_TEXTS{Words{"concat"},    Words{"left"},  Words{"lower"}, Words{"ltrim"},
                                 Words{"replace"},   Words{"right"}, Words{"rtrim"}, Words{"substr"},
                                 Words{"substring"}, Words{"trim"},  Words{"upper"}};
constexpr std::array OWN{
    OwnFunction{"json_array", "json_array(", ")", "json_build_array(", ")"},
    OwnFunction{"json_group_array", "json_group_array(", ")", "json_agg(", ")"},
    OwnFunction{"sha256_hex", "sha256_hex(", ")", "encode(sha256(convert_to((", ")::text,'UTF8')),'hex')"},
    OwnFunction{"utc_now", "datetime('now'", ")",
                "to_char(clock_timestamp() at time zone 'UTC','YYYY-MM-DD HH24:MI:SS'", ")"}};

template <class A> bool one_of(const A& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace

bool keyword(std::string_view word) { return std::binary_search(KEYWORDS.begin(), KEYWORDS.end(), word); }
bool opens_condition(std::string_view word) { return one_of(OPENING, word); }
bool ends_condition(std::string_view word) { return one_of(ENDING, word); }
bool comparison(std::string_view op) { return one_of(COMPARISONS, op); }
bool text_function(std::string_view name) { return plain_text_function(name) || one_of(TEXTS, name); }
bool plain_text_function(std::string_view name) { return one_of(PLAIN_TEXTS, name); }
std::optional<OwnFunction> own_function(std::string_view name) {
    const auto found = std::ranges::find(OWN, name, &OwnFunction::name);
    return found == OWN.end() ? std::nullopt : std::optional(*found);
}

} // namespace quorvel::vocabulary
