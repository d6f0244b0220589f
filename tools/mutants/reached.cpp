// Writes for each test how long it took and which mutants' places it reached, into the file named NRV718_REACHED.

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace {

class Writer : public testing::EmptyTestEventListener {
  public:
    explicit Writer(const char* path) : out_(path) {}
    void OnTestStart(const testing::TestInfo&) override { nrv::mutant::Reached.reset(); }
    void OnTestEnd(const testing::TestInfo& test) override {
        out_ << test.test_suite_name() << '.' << test.name() << ' ' << test.result()->elapsed_time();
        for (std::size_t number = 0; number < nrv::mutant::Reached.size(); ++number) {
            if (nrv::mutant::Reached[number]) {
                out_ << ' ' << number;
            }
        }
        out_ << std::endl;
    }

  private:
    std::ofstream out_;
};

const bool Started = [] {
    if (const char* const path = std::getenv("NRV718_REACHED")) {
        testing::UnitTest::GetInstance()->listeners().Append(new Writer(path));
    }
    return true;
}();

} // namespace
