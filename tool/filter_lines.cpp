#include "tool/filter_lines.h"

#include "model/number_text.h"
#include "ports/runtime_error.h"
#include "tool/text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

namespace nrv::tool {
namespace {

/// A character of another alphabet as the ASCII that stands for it here.
char Plain(std::uint32_t character) {
    switch (character) {
    case 0x00A0: // no-break, figure, thin and narrow blanks
    case 0x2007:
    case 0x2009:
    case 0x202F:
        return ' ';
    case 0x2012: // dashes and the sign of minus
    case 0x2013:
    case 0x2212:
        return '-';
    case 0x2019:
        return '\'';
    default:
        return character < 0x80 ? static_cast<char>(character) : '?';
    }
}

std::uint32_t ByteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

std::string FromUtf16(std::string_view bytes, bool high_first) {
    std::string text;
    for (std::size_t n = 0; n + 1 < bytes.size(); n += 2) {
        text += Plain(high_first ? (ByteAt(bytes, n) << 8U) + ByteAt(bytes, n + 1)
                                 : (ByteAt(bytes, n + 1) << 8U) + ByteAt(bytes, n));
    }
    return text;
}

/// How long the UTF-8 character at a place is; 0 where there is none.
std::size_t LengthOfUtf8(std::string_view bytes, std::size_t place) {
    const std::uint32_t lead = ByteAt(bytes, place);
    const std::size_t length = lead < 0x80                    ? 1
                               : lead >= 0xC2 && lead < 0xE0  ? 2
                               : lead >= 0xE0 && lead < 0xF0  ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    for (std::size_t n = 1; n < length; ++n) {
        if (place + n >= bytes.size() || (ByteAt(bytes, place + n) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return length;
}

std::string FromBytes(std::string_view bytes) {
    std::string text;
    for (std::size_t place = 0; place < bytes.size();) {
        const std::size_t length = LengthOfUtf8(bytes, place);
        if (length == 3) {
            text += Plain(((ByteAt(bytes, place) & 15U) << 12U) + ((ByteAt(bytes, place + 1) & 63U) << 6U) +
                          (ByteAt(bytes, place + 2) & 63U));
        } else if (length == 2) {
            text += Plain(((ByteAt(bytes, place) & 31U) << 6U) + (ByteAt(bytes, place + 1) & 63U));
        } else if (length == 0) {
            // Windows-1252, whose dash and apostrophe stand where Latin-1 has none.
            const std::uint32_t byte = ByteAt(bytes, place);
            text += byte == 0x96 ? '-' : byte == 0x92 ? '\'' : Plain(byte);
        } else {
            text += length == 1 ? bytes[place] : '?';
        }
        place += std::max<std::size_t>(length, 1);
    }
    return text;
}

std::string Decoded(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        return FromUtf16(bytes.substr(2), false);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return FromUtf16(bytes.substr(2), true);
    }
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return FromBytes(bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes);
}

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

/// Marks of a number, and how many digits come behind the last.
struct Marks {
    std::ptrdiff_t Points;
    std::ptrdiff_t Commas;
    std::size_t Behind = 0;
    char Last = 0;

    explicit Marks(std::string_view number)
        : Points(std::ranges::count(number, '.')), Commas(std::ranges::count(number, ',')) {
        const std::size_t last = number.find_last_of(".,");
        if (last != std::string_view::npos) {
            Behind = number.size() - last - 1;
            Last = number[last];
        }
    }
    bool Single() const { return Points + Commas == 1; }
};

DecimalMark MarkOf(char c) {
    return c == '.' ? DecimalMark::Point : DecimalMark::Comma;
}

/// What one number tells of the decimal mark.
DecimalMark Told(std::string_view number) {
    constexpr std::size_t group = 3;
    const Marks marks(number);
    if (marks.Points + marks.Commas == 0 || (marks.Single() && marks.Behind == group)) {
        return DecimalMark::Unknown;
    }
    if (marks.Single() || (marks.Points > 0 && marks.Commas > 0)) {
        return MarkOf(marks.Last);
    }
    return marks.Last == '.' ? DecimalMark::Comma : DecimalMark::Point; // one that is there twice groups
}

bool AllDigits(std::string_view text) {
    return std::ranges::all_of(text, IsDigit);
}

/// Whole numbers behind each other, such as "1 250", are one when each but the first is of three digits and all are
/// parted alike. None for what is no such number.
std::optional<std::string> WithoutGroups(std::string_view whole) {
    constexpr std::size_t group = 3;
    const std::size_t first = whole.find_first_not_of("0123456789");
    if (first == std::string_view::npos) {
        return std::string(whole);
    }
    const std::string_view mark = whole.substr(first, 1);
    if (first == 0 || first > group || std::string_view(" '.,").find(mark) == std::string_view::npos) {
        return std::nullopt;
    }
    std::string digits(whole.substr(0, first));
    const std::vector<std::string> groups = Split(whole.substr(first + 1), mark);
    for (const std::string& next : groups) {
        if (next.size() != group || !AllDigits(next)) {
            return std::nullopt;
        }
        digits += next;
    }
    return digits;
}

/// The number with a decimal point and no groups; none for a text that is no number so.
std::optional<double> Read(std::string_view text, DecimalMark mark) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    const std::size_t decimal = std::min(text.find(mark == DecimalMark::Comma ? ',' : '.'), text.size());
    const std::optional<std::string> whole = WithoutGroups(text.substr(0, decimal));
    const std::string_view behind = text.substr(std::min(decimal + 1, text.size()));
    if (!whole || !AllDigits(behind)) {
        return std::nullopt;
    }
    try {
        return model::ParseNumber((negative ? "-" : "") + *whole + "." + std::string(behind));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::string WithoutBlanks(std::string_view text) {
    std::string number;
    std::ranges::copy_if(text, std::back_inserter(number), [](char c) { return c != ' ' && c != '\''; });
    return number;
}

} // namespace

std::vector<std::string> LinesOf(std::string_view bytes) {
    std::vector<std::string> lines(1);
    char before = 0;
    for (const char c : Decoded(bytes)) {
        if (c == '\r' || (c == '\n' && before != '\r')) {
            lines.emplace_back();
        } else if (c != '\n') {
            lines.back() += c == '\t' || c == '\0' ? ' ' : std::iscntrl(static_cast<unsigned char>(c)) != 0 ? '?' : c;
        }
        before = c;
    }
    return lines;
}

DecimalMark DecimalMarkOf(const std::vector<std::string>& lines) {
    bool point = false;
    bool comma = false;
    for (const std::string& line : lines) {
        for (std::size_t from = 0; from < line.size(); ++from) {
            if (!IsDigit(line[from])) {
                continue;
            }
            const std::size_t end = std::min(line.find_first_not_of("0123456789.,", from), line.size());
            std::string_view number = std::string_view(line).substr(from, end - from);
            while (!IsDigit(number.back())) {
                number.remove_suffix(1);
            }
            point = point || Told(number) == DecimalMark::Point;
            comma = comma || Told(number) == DecimalMark::Comma;
            from = end;
        }
    }
    return point == comma ? DecimalMark::Unknown : point ? DecimalMark::Point : DecimalMark::Comma;
}

std::optional<double> NumberFrom(std::string_view text, DecimalMark mark, double lowest, double highest) {
    const std::string number = WithoutBlanks(text);
    const Marks marks(number);
    const DecimalMark own = Told(number);
    if (own != DecimalMark::Unknown) {
        return Read(text, own);
    }
    if (mark != DecimalMark::Unknown || !marks.Single()) {
        return Read(text, mark);
    }
    // "1,250" in a text that tells nothing: the one that lies in the range.
    const auto fits = [&](const std::optional<double>& value) {
        return value && *value >= lowest && *value <= highest;
    };
    const std::optional<double> as_point = Read(text, DecimalMark::Point);
    const std::optional<double> as_comma = Read(text, DecimalMark::Comma);
    const std::optional<double>& decimal = marks.Last == '.' ? as_point : as_comma;
    const std::optional<double>& grouped = marks.Last == '.' ? as_comma : as_point;
    if (fits(decimal) != fits(grouped)) {
        return fits(decimal) ? decimal : grouped;
    }
    return fits(decimal) && marks.Last == ',' ? std::nullopt : decimal;
}

} // namespace nrv::tool
