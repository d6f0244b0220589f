#include "tool/quantity.h"

#include "model/number_text.h"
#include "ports/runtime_error.h"
#include "tool/text.h"

#include <algorithm>
#include <array>

namespace nrv::tool {
namespace {

struct Conversion {
    std::string_view From;
    std::string_view To;
    double Factor;
};

constexpr std::array<Conversion, 6> Conversions{{{"khz", "hz", 1000.0},
                                                 {"k", "hz", 1000.0},
                                                 {"s", "ms", 1000.0},
                                                 {"ms", "s", 0.001},
                                                 {"octave", "oct", 1.0},
                                                 {"octaves", "oct", 1.0}}};

} // namespace

std::optional<Quantity> QuantityFrom(std::string_view text) {
    const std::string trimmed = model::TrimBlanks(text);
    const std::size_t end = std::min(trimmed.find_first_not_of("+-.0123456789"), trimmed.size());
    try {
        return Quantity{model::ParseNumber(trimmed.substr(0, end)), Small(model::TrimBlanks(trimmed.substr(end)))};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::optional<double> In(std::string_view unit, const Quantity& quantity) {
    const std::string wanted = Small(unit);
    if (quantity.Unit.empty() || quantity.Unit == wanted) {
        return quantity.Number;
    }
    for (const Conversion& conversion : Conversions) {
        if (conversion.From == quantity.Unit && conversion.To == wanted) {
            return quantity.Number * conversion.Factor;
        }
    }
    return std::nullopt;
}

} // namespace nrv::tool
