#include "ui/look/theme.h"

#include "response/response.h"
#include "ui/look/flat_style.h"
#include "ui/look/program_icon.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace nrv::ui {
namespace {

constexpr QColor Hex(int rgb) {
    return {(rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF};
}

constexpr Theme LightTheme{.Dark = false,
                           .Window = Hex(0xE9ECF0),
                           .Panel = Hex(0xF8F9FB),
                           .Line = Hex(0xCBD2DA),
                           .Text = Hex(0x1B2026),
                           .Dim = Hex(0x5C6773),
                           .Disabled = Hex(0x5C6773),
                           .Field = Hex(0xFFFFFF),
                           .Groove = Hex(0xC3CAD3),
                           .Unlit = Hex(0xD8DDE3),
                           .Focus = Hex(0x2563D9),
                           .Typed = Hex(0xC2610C),
                           .Muted = Hex(0xD42A2A),
                           .Accent = Hex(0x2563D9)};

constexpr Theme DarkTheme{.Dark = true,
                          .Window = Hex(0x1B1F24),
                          .Panel = Hex(0x252A31),
                          .Line = Hex(0x3B434D),
                          .Text = Hex(0xE6EAEE),
                          .Dim = Hex(0x9BA6B2),
                          .Disabled = Hex(0x9BA6B2),
                          .Field = Hex(0x1F242A),
                          .Groove = Hex(0x454E59),
                          .Unlit = Hex(0x343B44),
                          .Focus = Hex(0x6AA0FF),
                          .Typed = Hex(0xF0A048),
                          .Muted = Hex(0xD42A2A),
                          .Accent = Hex(0x6AA0FF)};

constexpr Paper LightPaper{.Ground = Hex(0xFCFDFE),
                           .FineLevels = Hex(0xEFF2F5),
                           .FineFrequencies = Hex(0xEAEEF2),
                           .TenDecibels = Hex(0xDFE4EA),
                           .Decades = Hex(0xC9D1DA),
                           .Zero = Hex(0x9AA5B1),
                           .Ink = Hex(0x1B2026)};

constexpr Paper DarkPaper{.Ground = Hex(0x0E1114),
                          .FineLevels = Hex(0x171B20),
                          .FineFrequencies = Hex(0x1A1F25),
                          .TenDecibels = Hex(0x242A31),
                          .Decades = Hex(0x343C46),
                          .Zero = Hex(0x66717E),
                          .Ink = Hex(0xE6EAEE)};

const Theme* current_theme = &LightTheme;

constexpr int DarkBelowLightness = 128;

QFont Sans(int pixels, QFont::Weight weight) {
    QFont font;
    font.setFamilies({QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"), QStringLiteral("Segoe UI"),
                      QStringLiteral("Helvetica Neue"), QStringLiteral("Arial")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QPalette PaletteOf(const Theme& theme) {
    QPalette palette;
    palette.setColor(QPalette::Window, theme.Window);
    palette.setColor(QPalette::WindowText, theme.Text);
    palette.setColor(QPalette::Base, theme.Field);
    palette.setColor(QPalette::AlternateBase, theme.Panel);
    palette.setColor(QPalette::Text, theme.Text);
    palette.setColor(QPalette::PlaceholderText, theme.Dim);
    palette.setColor(QPalette::Button, theme.Panel);
    palette.setColor(QPalette::ButtonText, theme.Text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, theme.Focus);
    palette.setColor(QPalette::HighlightedText, theme.Dark ? Hex(0x10141A) : QColor(Qt::white));
    palette.setColor(QPalette::Link, theme.Focus);
    palette.setColor(QPalette::Light, theme.Panel);
    palette.setColor(QPalette::Midlight, theme.Panel);
    palette.setColor(QPalette::Mid, theme.Line);
    palette.setColor(QPalette::Dark, theme.Groove);
    palette.setColor(QPalette::Shadow, theme.Dark ? QColor(Qt::black) : theme.Dim);
    palette.setColor(QPalette::ToolTipBase, theme.Dark ? theme.Line : theme.Text);
    palette.setColor(QPalette::ToolTipText, theme.Dark ? theme.Text : theme.Field);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
        palette.setColor(QPalette::Disabled, role, theme.Disabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, theme.Groove);
    return palette;
}

} // namespace

const Theme& CurrentTheme() {
    return *current_theme;
}

const Paper& GraphPaper() {
    return current_theme->Dark ? DarkPaper : LightPaper;
}

void ApplyTheme(QApplication& application) {
    const bool dark = QApplication::palette().color(QPalette::Window).lightness() < DarkBelowLightness;
    current_theme = dark ? &DarkTheme : &LightTheme;
    auto* style = new FlatStyle;
    style->setParent(&application);
    QApplication::setStyle(style);
    QGuiApplication::setWindowIcon(ProgramIcon());
    const QPalette palette = PaletteOf(*current_theme);
    QApplication::setPalette(palette);
    QApplication::setFont(TextFont());
    QToolTip::setPalette(palette);
    QToolTip::setFont(TextFont());
}

QFont TextFont() {
    static const QFont font = Sans(11, QFont::Normal);
    return font;
}

QFont CaptionFont() {
    static const QFont font = Sans(10, QFont::DemiBold);
    return font;
}

QFont ScaleFont() {
    static const QFont font = Sans(9, QFont::Normal);
    return font;
}

QFont StrongFont() {
    static const QFont font = Sans(11, QFont::DemiBold);
    return font;
}

QColor ChannelColour(int channel) {
    const controls::Colour colour = response::CurveColour(channel);
    return {colour.Red, colour.Green, colour.Blue};
}

} // namespace nrv::ui
