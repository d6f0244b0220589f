#include "fuzz/desk.h"

#include <algorithm>
#include <array>
#include <cstring>

// Text typed and pasted into every text box that can be typed into.

namespace nrv::fuzz {
namespace {

using controls::EnterKey;

constexpr std::size_t LongestText = 40;

/// The boxes of a control window that take keys.
controls::TextBox& BoxOf(controls::FrmCtrl& form, Input& input) {
    switch (input.Below(5)) {
    case 0:
        return form.Text2[input.Below(form.Text2.size())];
    case 1:
        return form.Text4[input.Below(form.Text4.size())];
    case 2:
        return form.Text5[input.Below(form.Text5.size())];
    case 3:
        return form.Text7[input.Below(form.Text7.size())];
    default:
        return form.Text8[input.Below(form.Text8.size())];
    }
}

/// Three ways in which a text comes into a box.
void Enter(Desk& desk, const controls::EventSource& source, controls::TextBox& box, Input& input) {
    const std::size_t way = input.Below(4);
    const std::string text = input.Text(input.Below(LongestText));
    if (way == 0) {
        box.UserText({});
    }
    if (way <= 1) {
        desk.Paste(source, box, text);
    } else if (way == 2) {
        for (const char key : text) {
            desk.Key(source, box, key);
        }
    } else if (box.Enabled() && !box.Locked()) {
        const bool limited = box.MaxLength() != controls::TextBox::NoLimit;
        box.UserText(limited ? text.substr(0, box.MaxLength()) : text);
    }
}

void EnterInWindow(Desk& desk, Input& input) {
    const int slot = input.Flag() ? Desk::FrontSlot : Desk::BackSlot;
    controls::TextBox& box = BoxOf(desk.Window(slot), input);
    Enter(desk, testing::UserIn(slot), box, input);
    const std::size_t boxes = desk.World().Boxes.Shown.size();
    desk.Key(testing::UserIn(slot), box, EnterKey);
    if (desk.World().Boxes.Shown.size() != boxes) {
        return;
    }
    // What was taken is what the box shows: it says the same when it is entered once more.
    const model::PresetImageRow image = desk.Program().Commands.Image();
    const std::string text = box.Text();
    desk.Key(testing::UserIn(slot), box, EnterKey);
    Require(box.Text() == text, "an entered text does not stay");
    Require(std::memcmp(&image, &desk.Program().Commands.Image(), sizeof image) == 0,
            "an entered text is another value");
}

void NameChannels(Desk& desk, Input& input) {
    controls::FrmEditLabel& form = desk.World().Forms.EditNames;
    desk.UseTool(Desk::FrontSlot, controls::EditNamesTool, [&] {
        for (std::size_t n = input.Below(4) + 1; n > 0; --n) {
            Enter(desk, testing::UserInDialog(), form.Text1[input.Below(form.Text1.size())], input);
        }
        desk.InDialog([&form] { form.Command1[0].UserClick(); });
    });
}

void NameMemory(Desk& desk, Input& input) {
    controls::FrmStore& form = desk.World().Forms.Store;
    desk.UseTool(Desk::FrontSlot, controls::StorePresetTool, [&] {
        const int line = static_cast<int>(input.Below(MemoryPositions));
        desk.InDialog([&form, line] { form.List1.UserDoubleClick(line); });
        Enter(desk, testing::UserInDialog(), form.Text1, input);
        desk.InDialog([&form] { form.Command1[1].UserClick(); });
    });
}

void TypePasswords(Desk& desk, Input& input) {
    controls::FrmPassword& form = desk.World().Forms.Password;
    desk.UseTool(Desk::FrontSlot, controls::PasswordTool, [&] {
        for (std::size_t n = input.Below(6) + 1; n > 0 && !input.Empty(); --n) {
            const std::array<controls::TextBox*, 3> boxes = {&form.Text1, &form.Text2, &form.Text3};
            controls::TextBox& box = *boxes[input.Below(3)];
            Enter(desk, testing::UserInDialog(), box, input);
            const std::uint8_t after = input.Byte();
            if ((after & 1) != 0) {
                desk.Key(testing::UserInDialog(), box, EnterKey);
            }
            if ((after & 2) != 0) {
                form.Text3.UserText(form.Text2.Text());
            }
            controls::Button& button = form.Command1[(after >> 2) % form.Command1.size()];
            desk.InDialog([&button] { button.UserClick(); });
        }
    });
}

void Type(Desk& desk, Input& input) {
    desk.Reset();
    for (int n = 0; n < 8 && !input.Empty() && !desk.Ended(); ++n) {
        desk.AnswerBoxes(0);
        switch (input.Below(8)) {
        case 0:
            NameChannels(desk, input);
            break;
        case 1:
            // 450 frames of a name are as good as any: seldom.
            input.Byte() < 16 ? NameMemory(desk, input) : EnterInWindow(desk, input);
            break;
        case 2:
            TypePasswords(desk, input);
            break;
        default:
            EnterInWindow(desk, input);
            break;
        }
    }
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static nrv::fuzz::Desk desk;
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Type(desk, input);
    return 0;
}
