#include "program/fault_table.h"
#include "reference/page.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <sstream>

// Every operation against every fault at its first, a middle and its last exchange: what goes out, what is told, which
// windows stay, and what the stores hold. With NRV718_FAULT_TABLE set to a file's name the cases that ran are written
// there as a Markdown table of what happened.

namespace nrv::testing {
namespace {

struct FaultCase {
    const FaultOperation* Operation = nullptr;
    std::string Place;
    Trial Meets;
};

const std::map<Fault, std::string> FaultNames{{Fault::None, "NoFault"},
                                              {Fault::Silent, "Silent"},
                                              {Fault::GoneBefore, "PortGoneBefore"},
                                              {Fault::GoneWaiting, "PortGoneWaiting"},
                                              {Fault::OtherAnswers, "OtherDeviceAnswers"},
                                              {Fault::SixSecondsLate, "SixSecondsLate"},
                                              {Fault::AfterTheWait, "AfterTheWait"}};

const std::vector<FaultOperation>& Operations() {
    static const std::vector<FaultOperation> All = [] {
        std::vector<FaultOperation> all;
        for (const auto& some :
             {ChangeOperations(), PresetOperations(), ToolOperations(), OpeningOperations(), HistoryOperations()}) {
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return All;
}

std::vector<std::pair<std::string, int>> PlacesOf(const FaultOperation& operation) {
    if (operation.Exchanges == 0) {
        return {{"Nowhere", 0}};
    }
    const int last = operation.Exchanges - 1;
    std::vector<std::pair<std::string, int>> places{{"First", 0}, {"Middle", last / 2}, {"Last", last}};
    places.insert(places.end(), operation.FurtherPlaces.begin(), operation.FurtherPlaces.end());
    std::set<int> taken;
    std::erase_if(places, [&taken](const auto& place) { return !taken.insert(place.second).second; });
    return places;
}

std::vector<FaultCase> Cases() {
    std::vector<FaultCase> cases;
    for (const FaultOperation& operation : Operations()) {
        cases.push_back({&operation, "Nowhere", {Fault::None, 0}});
        for (const auto& [place, at] : PlacesOf(operation)) {
            for (const auto& [fault, name] : FaultNames) {
                const bool waits = operation.Answered && operation.Exchanges > 0;
                if (fault != Fault::None && (waits || fault != Fault::GoneWaiting)) {
                    cases.push_back({&operation, place, {fault, at}});
                }
            }
        }
    }
    return cases;
}

std::string NameOf(const FaultCase& of) {
    std::string name = of.Operation->Name + "_" + FaultNames.at(of.Meets.Kind) + "_" + of.Place;
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0 && c != '_'; });
    return name;
}

/// Where the fault is met, as the page tells it.
std::string ExchangeOf(const FaultCase& of) {
    const std::string at = of.Meets.Kind == Fault::None ? "-" : std::to_string(of.Meets.At + 1);
    return at + " of " + std::to_string(of.Operation->Exchanges);
}

void PrintTo(const FaultCase& of, std::ostream* stream) {
    *stream << NameOf(of);
}

std::string Words(const std::vector<Frame>& frames) {
    std::ostringstream words;
    for (std::size_t n = 0; n < frames.size(); ++n) {
        words << n << ':' << std::hex;
        for (std::size_t byte = 2; byte < 12; ++byte) {
            words << ' ' << static_cast<int>(frames[n][byte]);
        }
        words << std::dec << '\n';
    }
    return words.str();
}

class FaultTable : public ::testing::TestWithParam<FaultCase> {
  protected:
    static void TearDownTestSuite() {
        if (const char* file = std::getenv("NRV718_FAULT_TABLE")) {
            std::ofstream table(file);
            table << "| Operation | Fault | At exchange | Frames out | Boxes | Device's window | Status line |\n"
                  << "|---|---|---|---|---|---|---|\n";
            for (const std::string& row : MarkdownRows) {
                table << row;
            }
        }
    }

    void Compare(const Outcome& expected, const Outcome& actual) {
        // A store's frames are told as lines only when they differ.
        if (expected.Sent != actual.Sent) {
            EXPECT_EQ(Words(expected.Sent), Words(actual.Sent));
        }
        EXPECT_EQ(expected.Boxes, actual.Boxes);
        EXPECT_EQ(expected.Loaded, actual.Loaded);
        EXPECT_EQ(expected.InUse, actual.InUse);
        EXPECT_EQ(expected.SlotDevices, actual.SlotDevices);
        EXPECT_EQ(expected.OpenWindowTop, actual.OpenWindowTop);
        EXPECT_EQ(expected.CurrentWindow, actual.CurrentWindow);
        EXPECT_EQ(expected.Titles, actual.Titles);
        EXPECT_EQ(expected.Rows, actual.Rows);
        EXPECT_EQ(expected.Unconnected, actual.Unconnected);
        EXPECT_EQ(expected.Checked, actual.Checked);
        EXPECT_EQ(expected.Found, actual.Found);
        EXPECT_EQ(expected.DeviceRow, actual.DeviceRow);
        EXPECT_EQ(expected.Labels, actual.Labels);
        EXPECT_EQ(expected.Status, actual.Status);
        EXPECT_EQ(expected.Removed, actual.Removed);
        EXPECT_EQ(expected.Ended, actual.Ended);
        EXPECT_EQ(expected.LinkReady, actual.LinkReady);
        EXPECT_EQ(expected.TransactionDone, actual.TransactionDone);
        EXPECT_EQ(expected.LoadingNotice, actual.LoadingNotice);
        EXPECT_EQ(expected.InputLen, actual.InputLen);
        EXPECT_THAT(actual.NotAtRest, ::testing::IsEmpty());
        EXPECT_EQ(Differences(*expected.Stores, *actual.Stores), "");
    }

    void Note(const FaultCase& of, const Outcome& actual) {
        std::ostringstream row;
        row << "| " << of.Operation->Name << " | " << FaultNames.at(of.Meets.Kind) << " | " << ExchangeOf(of) << " | "
            << actual.Sent.size() << " | ";
        for (const ShownBox& box : actual.Boxes) {
            row << '"' << box.Title << "\" ";
        }
        const int slot = of.Operation->Slot == Operation::NoSlot ? FaultWorld::NewSlot : of.Operation->Slot;
        row << "| "
            << (actual.Ended                                       ? "the process ended"
                : actual.Loaded.at(static_cast<std::size_t>(slot)) ? "open"
                                                                   : "closed")
            << " | " << actual.Status << (HasFailure() ? " **(not as it should be)**" : "") << " |\n";
        MarkdownRows.push_back(row.str());
    }

    static inline std::vector<std::string> MarkdownRows;
    FaultWorld at;
};

TEST_P(FaultTable, HoldsWhatItShould) {
    const FaultOperation& operation = *GetParam().Operation;
    if (operation.Prepare) {
        operation.Prepare(at);
    }
    at.program.Main.StatusLine.SetCaption(FaultWorld::ToldBefore);
    const std::vector<Step> steps = operation.Steps(at);
    ASSERT_EQ(steps.size(), static_cast<std::size_t>(operation.Exchanges));
    const Outcome before = at.Look();
    const Trial& trial = GetParam().Meets;
    const Expectation expected = Expected(operation, before, steps, trial);
    const auto place = static_cast<std::size_t>(trial.At);
    at.Meet(trial, place < steps.size() ? steps[place].Kind : Exchange::Ordinary, operation.Device);
    operation.Event(at);
    const Outcome after = at.Look();
    Compare(expected.After, after);
    if (operation.AlsoSee) {
        operation.AlsoSee(at, expected);
    }
    Note(GetParam(), after);
}

/// The page has a row for each case and no other; what came of it is not looked at.
TEST(FaultsPage, HasEveryCase) {
    std::multiset<std::string> told;
    std::istringstream page(TextOfFile(NRV718_SOURCES "/docs/faults.md"));
    for (std::string line; std::getline(page, line);) {
        if (const Row cells = line.starts_with("|") ? CellsOf(line) : Row(); cells.size() > 2) {
            told.insert(cells[0] + ", " + cells[1] + ", " + cells[2]);
        }
    }
    std::multiset<std::string> cases{"Operation, Fault, At exchange", "---, ---, ---"};
    for (const FaultCase& of : Cases()) {
        cases.insert(of.Operation->Name + ", " + FaultNames.at(of.Meets.Kind) + ", " + ExchangeOf(of));
    }
    std::vector<std::string> missing;
    std::ranges::set_difference(cases, told, std::back_inserter(missing));
    EXPECT_THAT(missing, ::testing::IsEmpty());
    std::vector<std::string> strange;
    std::ranges::set_difference(told, cases, std::back_inserter(strange));
    EXPECT_THAT(strange, ::testing::IsEmpty());
}

/// A command that none of them sends would meet no fault.
TEST(FaultsPage, TheOperationsSendEveryCommandThatThereIs) {
    std::set<int> sent;
    for (const FaultOperation& operation : Operations()) {
        const auto world = std::make_unique<FaultWorld>();
        if (operation.Prepare) {
            operation.Prepare(*world);
        }
        for (const Step& step : operation.Steps(*world)) {
            sent.insert(step.Sent[3]);
        }
    }
    EXPECT_EQ(sent, CommandsOfLink(NRV718_SOURCES));
}

INSTANTIATE_TEST_SUITE_P(Every, FaultTable, ::testing::ValuesIn(Cases()),
                         [](const auto& instance) { return NameOf(instance.param); });

} // namespace
} // namespace nrv::testing
