#include "model/number_text.h"
#include "ports/runtime_error.h"
#include "support/test_folder.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <locale>
#include <string>

namespace nrv::model {
namespace {

/// Decimal comma and grouping, for the streams.
class CommaPunctuation : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The same for the functions of C: a locale as the C library keeps it, for machines that have none of such a country.
class CommaLocale {
  public:
    CommaLocale() {
        std::filesystem::create_directory(folder_ / "comma");
        // Where the six entries begin; "," and "."; groups of three; both once more as wide characters; the code set.
        folder_.Write("comma/LC_NUMERIC",
                      {0x14, 0x11, 0x03, 0x20, 6,   0, 0,  0, 0x20, 0, 0,  0, 0x22, 0,   0,   0,   0x24, 0,
                       0,    0,    40,   0,    0,   0, 44, 0, 0,    0, 48, 0, 0,    0,   ',', 0,   '.',  0,
                       3,    3,    0,    0,    ',', 0, 0,  0, '.',  0, 0,  0, 'U',  'T', 'F', '-', '8',  0});
        setenv("LOCPATH", folder_.Path().c_str(), 1);
        std::setlocale(LC_NUMERIC, "comma");
        std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    }
    ~CommaLocale() {
        unsetenv("LOCPATH");
        std::setlocale(LC_NUMERIC, "C");
        std::locale::global(before_);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

  private:
    testing::TestFolder folder_;
    std::locale before_;
};

TEST(NumberText, UsesThePointWhateverTheLocale) {
    const CommaLocale comma;
#if defined(__GLIBC__) && __BYTE_ORDER == __LITTLE_ENDIAN
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
#endif
    EXPECT_EQ(NumberText(1234.5), "1234.5");
    EXPECT_EQ(NumberText(20000.0), "20000");
    EXPECT_EQ(ParseNumber("1234.5"), 1234.5);
    EXPECT_THROW(ParseNumber("1234,5"), RuntimeError);
    EXPECT_THROW(ParseNumber("1.234,5"), RuntimeError);
}

} // namespace
} // namespace nrv::model
