#include "hands.h"
#include "tour.h"

#include <QComboBox>
#include <QLineEdit>

#include <array>

// The guide's example: a loudspeaker of three ways on In A, from the names to the store.

namespace nrv::tour {
namespace {

using driver::Find;
using driver::FindAs;

constexpr int ExampleId = 9;
constexpr int Position = 4; ///< of the device's memory, from 1

/// Entries of the list of slopes.
constexpr int Bw24 = 8;
constexpr int Lz24 = 9;

struct Way {
    const char* Name;
    int HighPassSlope;
    const char* HighPassHz;
    int LowPassSlope;
    const char* LowPassHz;
    int GainSteps;      ///< of 0.2 dB up from 0
    int ThresholdSteps; ///< of 0.5 dBu down from the factory's 19 dBu
    const char* Delay;
};

/// Out 1 to Out 3.
constexpr std::array<Way, 3> Ways = {{{"Sub", Bw24, "30", Lz24, "100", 10, 10, "0"},
                                      {"Mid", Lz24, "100", Lz24, "1600", 0, 14, "3.5"},
                                      {"Top", Lz24, "1600", 0, "", -15, 20, "4.1"}}};

QString Named(const char* name, std::size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

QWidget* Control(const char* name, std::size_t index) {
    return Find(Named(name, index), ControlWindow());
}

void TypeAndEnter(QWidget* box, const char* text) {
    Type(box, QLatin1String(text));
    driver::Press(box, Qt::Key_Return);
}

void Step(QWidget* fader, int up) {
    for (int step = 0; step < std::abs(up); ++step) {
        driver::Press(fader, up > 0 ? Qt::Key_Up : Qt::Key_Down);
    }
}

} // namespace

bool Tour::WorkExample() {
    return OpenDevice(ExampleId, "example-window") && NameWays() && RouteAndCross() && Equalise() && AlignAndLimit() &&
           StoreExample() && CloseWindow();
}

bool Tour::NameWays() {
    boxes_.Next(QStringLiteral("Yes"));
    return WithTool(controls::EditNamesTool, QStringLiteral("FrmEditLabel"),
                    [this](QWidget& dialog) {
                        for (std::size_t way = 0; way < Ways.size(); ++way) {
                            Type(Find(Named("Text1", way + 2), &dialog), QLatin1String(Ways[way].Name));
                        }
                        Picture(dialog, "example-names");
                        driver::Click(Find(QStringLiteral("Command1(0)"), &dialog));
                    }) &&
           Check(Form().Label300[4].Caption() == "Top", "three outputs are named Sub, Mid and Top");
}

bool Tour::RouteAndCross() {
    for (std::size_t way = 0; way < Ways.size(); ++way) {
        ShowTab(static_cast<int>(way) + 2);
        driver::Choose(qobject_cast<QComboBox*>(Control("Combo3", way)), 0);
        driver::Choose(qobject_cast<QComboBox*>(Control("Combo2", 2 * way)), Ways[way].HighPassSlope);
        TypeAndEnter(Control("Text8", 2 * way), Ways[way].HighPassHz);
        driver::Choose(qobject_cast<QComboBox*>(Control("Combo2", 2 * way + 1)), Ways[way].LowPassSlope);
        if (Ways[way].LowPassSlope != 0) {
            TypeAndEnter(Control("Text8", 2 * way + 1), Ways[way].LowPassHz);
        }
    }
    ShowTab(3); // the mid's, with the curves of the others
    driver::ClickMark(Control("Check4", 1));
    driver::ClickMark(Control("Check5", 1));
    Picture(*ControlWindow(), "example-crossovers",
            {{"Frame9(1)", Qt::AlignRight | Qt::AlignTop},
             {"Frame7(2)", Qt::AlignRight | Qt::AlignTop},
             {"Frame7(3)", Qt::AlignRight | Qt::AlignTop},
             {"Check5(1)", Qt::AlignRight | Qt::AlignVCenter}});
    return Check(Form().Text8[1].Text() == "100" && Form().Text8[4].Text() == "1600" && Form().Combo3[2].Index() == 0,
                 "crossovers split In A into three ways");
}

bool Tour::Equalise() {
    driver::ClickMark(Control("Check3", 3));
    // The mid's second section, 4 dB down at 400 Hz over 0.7 octaves.
    TypeAndEnter(Control("Text4", 25), "400");
    TypeAndEnter(Control("Text5", 25), "0.7");
    Step(Control("Slider2", 25), -20);
    Picture(*ControlWindow(), "example-equaliser", {{"Label5(25)", Qt::AlignBottom}, {"Slider2(25)", Qt::AlignLeft}});
    // The top's shelf: the horn's fall above 8 kHz made good.
    ShowTab(4);
    TypeAndEnter(Control("Text7", 6), "8000");
    driver::Choose(qobject_cast<QComboBox*>(Control("Combo1", 6)), 3);
    Step(Control("Slider3", 6), 6);
    const model::ParamRow& values = application_.Logic().Stores.ParamValues[ExampleId];
    return Check(values.PeqGain[25] == -4.0 && values.PeqFrequency[25] == 400.0 && Form().Text6[6].Text() == "3",
                 "an equaliser section and a shelf shape two of the ways");
}

bool Tour::AlignAndLimit() {
    ShowTab(controls::DelaysTab);
    TypeAndEnter(Control("Text2", 0), "0");
    for (std::size_t way = 0; way < Ways.size(); ++way) {
        TypeAndEnter(Control("Text2", way + 2), Ways[way].Delay);
    }
    Picture(*ControlWindow(), "example-delays",
            {{"Text2(0)", Qt::AlignLeft}, {"Text2(3)", Qt::AlignLeft}, {"Text2(4)", Qt::AlignLeft}});
    ShowTab(controls::GainsTab);
    for (std::size_t way = 0; way < Ways.size(); ++way) {
        Step(Control("Slider1", way + 2), Ways[way].GainSteps);
    }
    Picture(*ControlWindow(), "example-gains",
            {{"Slider1(2)", Qt::AlignLeft}, {"Slider1(3)", Qt::AlignLeft}, {"Slider1(4)", Qt::AlignLeft}});
    for (std::size_t way = 0; way < Ways.size(); ++way) {
        ShowTab(static_cast<int>(way) + 2);
        Step(Control("Slider4", way + 2), -Ways[way].ThresholdSteps);
    }
    // The top's limiter lets go in half a second and takes hold in 5 ms.
    Step(Control("Slider5", 4), -7);
    Step(Control("Slider6", 4), -5);
    Picture(*ControlWindow(), "example-limiter",
            {{"Slider4(4)", Qt::AlignLeft}, {"Slider5(4)", Qt::AlignLeft}, {"Slider6(4)", Qt::AlignLeft}});
    return Check(Form().Text2[4].Text() == "4.105 ms" && Form().Text1[4].Text() == "-3" &&
                     Form().Text9[4].Text() == "9" && Form().Text10[4].Text() == "0.5s" &&
                     Form().Text11[4].Text() == "  5ms",
                 "delays, gains and limiters fit the three ways to each other");
}

bool Tour::StoreExample() {
    ShowTab(3);
    driver::ClickMark(Control("Check3", 3));
    Picture(*ControlWindow(), "example-curves");
    boxes_.Next(QStringLiteral("Yes"));
    return WithTool(controls::StorePresetTool, QStringLiteral("FrmStore"),
                    [this](QWidget& dialog) {
                        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1"), &dialog), Position - 1);
                        Type(Find(QStringLiteral("Text1"), &dialog), QStringLiteral("Three-way"));
                        Picture(dialog, "example-store");
                        driver::Click(Find(QStringLiteral("Command1(1)"), &dialog));
                    }) &&
           Check(application_.Logic().Stores.ParamValues[ExampleId].PresetNames[Position - 1] == "Three-way       ",
                 "the example is stored in the device");
}

} // namespace nrv::tour
