#include "controls/dialog_forms.h"

#include <string>

namespace nrv::controls {

FrmEditLabel::FrmEditLabel() {
    Window.SetCaption("NRV-718 Edit Names");
    const std::array<const char*, ChannelCount> captions = {"In A", "In B", "Out1", "Out2",
                                                            "Out3", "Out4", "Out5", "Out6"};
    for (std::size_t channel = 0; channel < captions.size(); ++channel) {
        Captions[channel].SetCaption(captions[channel]);
        Text1[channel].SetMaxLength(ChannelNameLength);
        Text1[channel].SetLocked(IsInput(channel));
    }
    Command1[0].SetCaption("OK");
    Command1[1].SetCaption("Cancel");
}

FrmStore::FrmStore() {
    Window.SetCaption("NRV-718 Store preset");
    ListCaption.SetCaption("Memory Preset");
    List1.SetToolTip("Double click to copy name");
    NameCaption.SetCaption("Edit Name");
    Text1.SetMaxLength(MemoryNameLength);
    PositionCaption.SetCaption("Select position");
    std::vector<std::string> positions;
    for (int position = 1; position <= MemoryPositions; ++position) {
        positions.push_back(std::to_string(position));
    }
    Combo1.SetItems(positions);
    ProgressBar1.SetVisible(false);
    Command1[0].SetCaption("Cancel");
    Command1[1].SetCaption("Store");
}

FrmRead::FrmRead() {
    Window.SetCaption("NRV-718 Read Preset");
    ListCaption.SetCaption("Memory Preset");
    List1.SetToolTip("Select a preset");
    Command1[0].SetCaption("Cancel");
    Command1[1].SetCaption("Read");
}

FrmCopyIn::FrmCopyIn() {
    Window.SetCaption("NRV-718 Copy Input");
    Command1[0].SetCaption("Copy InputA to InputB");
    Command1[1].SetCaption("Copy InputB to InputA");
}

FrmCopyOut::FrmCopyOut() {
    Window.SetCaption("NRV-718 Copy Output");
    Captions[0].SetCaption("Output  Source ");
    Captions[1].SetCaption("Output  Destination");
    Command1.SetCaption("Copy");
}

FrmPassword::FrmPassword() {
    Window.SetCaption("NRV-718 Password");
    LoginCaption.SetCaption("Insert Password");
    Label2.SetCaption("System Unlock");
    SwitchEnds[0].SetCaption("Unlock");
    SwitchEnds[1].SetCaption("Lock");
    NewCaption.SetCaption("Insert New Password");
    ConfirmCaption.SetCaption("Confirm New Password");
    for (TextBox* box : {&Text1, &Text2, &Text3}) {
        box->SetMaxLength(PasswordLength);
    }
    const std::array<const char*, 7> captions = {"OK", "Exit", "Config new password", "Confirm", "Cancel", "OK", "<<"};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        Command1[i].SetCaption(captions[i]);
    }
    Frame1.SetVisible(false);
    Frame4.SetVisible(false);
}

} // namespace nrv::controls
