#include "model/tables.h"

#include <cmath>
#include <span>

namespace nrv::model {

namespace {

constexpr std::size_t input_size = 72;
constexpr std::size_t output_size = 48;
constexpr std::size_t first_output = 144;

constexpr std::uint8_t Byte(std::size_t value) {
    return static_cast<std::uint8_t>(value);
}

/// Fills blocks of five for PEQ sections at 0 dB and 0.45 octaves, their frequency codes `step` apart.
constexpr void PutPeqBlocks(std::span<std::uint8_t> to, std::size_t step) {
    for (std::size_t section = 0; 5 * section < to.size(); ++section) {
        to[5 * section + 1] = Byte(step * (section + 1));
        to[5 * section + 2] = 8;
        to[5 * section + 4] = 75;
    }
}

constexpr void PutInput(std::span<std::uint8_t, input_size> to) {
    to[1] = 60;
    PutPeqBlocks(to.subspan(5, 50), 10);
    to[56] = 25;
    to[59] = 24;
    to[61] = 60;
    to[64] = 24;
}

constexpr void PutOutput(std::span<std::uint8_t, output_size> to, std::size_t number) {
    to[1] = number == 1 ? std::uint8_t{10} : Byte(20 * (number - 1));
    to[2] = number == 1 ? std::uint8_t{0} : std::uint8_t{2};
    to[4] = Byte(20 * number);
    to[5] = 2;
    PutPeqBlocks(to.subspan(6, 20), 5);
    to[27] = 10;
    to[30] = 24;
    to[34] = 5;
    to[35] = 10;
    to[37] = 58;
    to[40] = 60;
    to[41] = 1;
    to[42] = ' ';
    to[43] = 'O';
    to[44] = 'u';
    to[45] = 't';
    to[46] = ' ';
    to[47] = Byte('0' + number);
}

constexpr std::array<std::uint8_t, 432> BuildFactoryImage() {
    std::array<std::uint8_t, 432> image{};
    const std::span all(image);
    PutInput(all.subspan<0, input_size>());
    PutInput(all.subspan<input_size, input_size>());
    // The two inputs differ on purpose: In A starts with a delay of 20 ms, and the name of In B ends in a zero and the
    // master gain code.
    image[3] = 20;
    constexpr std::array<std::uint8_t, 6> name_a{' ', 'I', 'n', ' ', 'A', ' '};
    constexpr std::array<std::uint8_t, 6> name_b{' ', 'I', 'n', ' ', 0, 60};
    for (std::size_t i = 0; i < name_a.size(); ++i) {
        image[NameOffsets[0] + i] = name_a[i];
        image[NameOffsets[1] + i] = name_b[i];
    }
    for (std::size_t number = 1; number <= 6; ++number) {
        PutOutput(all.subspan(first_output + output_size * (number - 1)).first<output_size>(), number);
    }
    return image;
}

std::array<double, 60> BuildQTable() {
    std::array<double, 60> table{};
    for (std::size_t code = 0; code < table.size(); ++code) {
        const double power = std::exp2(static_cast<double>(code + 1) / 20.0);
        table[code] = (power + 1.0) / (2.0 * (power - 1.0));
    }
    return table;
}

} // namespace

constinit const std::array<std::uint8_t, 432> FactoryImage = BuildFactoryImage();
const std::array<double, 60> QTable = BuildQTable();

} // namespace nrv::model
