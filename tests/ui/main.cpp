// nrv718_ui_tests NAME [FUNCTION...]: runs one test of the windows, as the toolkit's own main would.

#include "ui_test.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

namespace nrv::test {
namespace {

std::map<std::string, UiTest::Maker, std::less<>>& Makers() {
    static std::map<std::string, UiTest::Maker, std::less<>> makers;
    return makers;
}

} // namespace

UiTest::UiTest(std::string_view file, Maker make) {
    Makers().emplace(std::filesystem::path(file).stem().string(), make);
}

std::unique_ptr<QObject> UiTest::Make(std::string_view name) {
    const auto found = Makers().find(name);
    return found == Makers().end() ? nullptr : found->second();
}

} // namespace nrv::test

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    const std::unique_ptr<QObject> test = argc > 1 ? nrv::test::UiTest::Make(argv[1]) : nullptr;
    if (test == nullptr) {
        static_cast<void>(
            std::fprintf(stderr, "Tell the file of a test without its .cpp, and after it functions of it.\n"));
        return 2;
    }
    argv[1] = argv[0];
    return QTest::qExec(test.get(), argc - 1, argv + 1);
}
