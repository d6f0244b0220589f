#include "simulator/orders.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace nrv::simulator {
namespace {

constexpr std::size_t FormWidth = 22;

std::chrono::milliseconds Time(int milliseconds) {
    return std::chrono::milliseconds(milliseconds);
}

std::string Give(Line& line, const Fault& fault) {
    line.Order(fault);
    return {};
}

/// Does something with the device, or with every device.
template <typename Work>
std::string WithDevices(Line& line, const OrderWords& words, const Work& work) {
    line.WithRack([&](Rack& rack) {
        for (const int id : words.Id ? std::vector<int>{*words.Id} : rack.Ids()) {
            work(rack, id);
        }
    });
    return {};
}

std::string SetLevels(Line& line, const OrderWords& words) {
    Levels levels{};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = static_cast<Byte>(words.Number(i));
    }
    return WithDevices(line, words, [&levels](Rack& rack, int id) { rack.At(id).SetLevels(levels); });
}

std::string Reboot(Line& line, const OrderWords& words, bool to_factory) {
    return WithDevices(
        line, words, [&words, to_factory](Rack& rack, int id) { rack.Reboot(id, Time(words.Number(0)), to_factory); });
}

std::string Replug(Line& line, const OrderWords& /*words*/) {
    line.PlugIn();
    return "plugged in on " + line.DevicePath() + "\n";
}

std::string List(Line& line, const OrderWords& /*words*/) {
    return line.WithRack([](Rack& rack) {
        std::string text;
        for (const auto& [id, device] : rack.Devices()) {
            text += "ID " + std::to_string(id) + "  " + device.Label() + (device.Locked() ? "  locked" : "") +
                    (rack.FindTwin(id) != nullptr ? "  and a second one" : "") + "\n";
        }
        return text;
    });
}

constexpr std::array<OrderPlace, 8> Places{{
    {"N", 0, 1000000, "the count", "how many answers; 0 for all from now on"},
    {"MS", 0, 3600000, "the time", "milliseconds"},
    {"BYTES", 0, static_cast<int>(PresetSize), "the number of bytes", "how many bytes"},
    {"K", 0, static_cast<int>(PresetSize) - 1, "the byte", "which byte of an answer, from 0"},
    {"VALUE", 0, 255, "the value", "what the byte becomes"},
    {"OTHER", 0, HighestId, "the ID", "the ID of another device"},
    {"BITS", 0, 1000, "the number of bits", "bit times; a byte takes 10"},
    {"L", 0, 255, "a level", "a level, from In A to Out 6; a meter has six lamps"},
}};

const std::array<OrderForm, 25> Forms{{
    {"die ID [N]", "no answer to anything until revived, or to N requests",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::Die(w.Id, w.Number(0))); }},
    {"revive ID", "answers again",
     [](Line& line, const OrderWords& w) {
         line.Revive(w.Id);
         return std::string();
     }},
    {"lose ID [N]", "N answers are lost, 1 unless told",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::Lose(w.Id, w.Number(0, 1))); }},
    {"late ID N MS", "N answers come MS milliseconds late",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::Late(w.Id, w.Number(0), Time(w.Number(1)))); }},
    {"cut ID N BYTES", "N answers end after so many bytes",
     [](Line& line, const OrderWords& w) {
         return Give(line, Fault::Cut(w.Id, w.Number(0), static_cast<std::size_t>(w.Number(1))));
     }},
    {"double ID [N]", "N answers come twice, 1 unless told",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::Double(w.Id, w.Number(0, 1))); }},
    {"garble ID N K VALUE", "byte K of N answers becomes VALUE",
     [](Line& line, const OrderWords& w) {
         return Give(line, Fault::Garble(w.Id, w.Number(0), static_cast<std::size_t>(w.Number(1)),
                                         static_cast<Byte>(w.Number(2))));
     }},
    {"as ID N OTHER", "N answers are signed with the ID OTHER",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::AnswerAs(w.Id, w.Number(0), w.Number(1))); }},
    {"from ID N OTHER", "N requests are answered by the device OTHER",
     [](Line& line, const OrderWords& w) {
         line.WithRack([&w](Rack& rack) { rack.At(w.Number(1)); });
         return Give(line, Fault::AnswerFrom(w.Id, w.Number(0), w.Number(1)));
     }},
    {"drip ID N MS", "MS milliseconds pass between the bytes of N answers",
     [](Line& line, const OrderWords& w) { return Give(line, Fault::Drip(w.Id, w.Number(0), Time(w.Number(1)))); }},
    {"calm", "forget all of these orders",
     [](Line& line, const OrderWords&) {
         line.ClearOrders();
         return std::string();
     }},
    {"meters ID move", "the meters of the device move",
     [](Line& line, const OrderWords& w) {
         return WithDevices(line, w, [](Rack& rack, int id) { rack.At(id).SetLevels(std::nullopt); });
     }},
    {"meters ID L L L L L L L L", "the device shows these levels", SetLevels},
    {"twin ID BITS", "a second device of this ID answers too, BITS bit times later",
     [](Line& line, const OrderWords& w) {
         return WithDevices(line, w, [&w](Rack& rack, int id) {
             rack.RemoveTwin(id);
             rack.AddTwin(id, w.Number(0));
         });
     }},
    {"untwin ID", "the second device goes away",
     [](Line& line, const OrderWords& w) {
         return WithDevices(line, w, [](Rack& rack, int id) { rack.RemoveTwin(id); });
     }},
    {"duplex half", "one pair of wires: an answer that meets a request is lost",
     [](Line& line, const OrderWords&) {
         line.SetHalfDuplex(true);
         return std::string();
     }},
    {"duplex full", "a wire for each direction",
     [](Line& line, const OrderWords&) {
         line.SetHalfDuplex(false);
         return std::string();
     }},
    {"noise MS", "a stray byte comes about so often while the line is quiet; 0 for none",
     [](Line& line, const OrderWords& w) {
         line.SetNoise(Time(w.Number(0)));
         return std::string();
     }},
    {"reboot ID MS stored", "silent for MS milliseconds, then back with stored settings",
     [](Line& line, const OrderWords& w) { return Reboot(line, w, false); }},
    {"reboot ID MS factory", "the same, with the factory's settings",
     [](Line& line, const OrderWords& w) { return Reboot(line, w, true); }},
    {"unplug", "the line's end goes away, and its links",
     [](Line& line, const OrderWords&) {
         line.Unplug();
         return std::string();
     }},
    {"replug", "it comes back under the same links", Replug},
    {"list", "the devices on the line", List},
    {"quit", "end the program", nullptr},
    {"help", "this text", nullptr},
}};

std::string HelpLine(std::string_view form, std::string_view meaning) {
    std::string line(form);
    line.resize(std::max(line.size() + 2, FormWidth), ' ');
    return line.append(meaning) + "\n";
}

} // namespace

std::span<const OrderPlace> OrderPlaces() {
    return Places;
}

std::span<const OrderForm> OrderForms() {
    return Forms;
}

std::string OrderHelp() {
    std::string text;
    for (const OrderForm& form : Forms) {
        text += HelpLine(form.Form, form.Meaning);
    }
    text += HelpLine("ID", "0 to " + std::to_string(HighestId) + ", of a device on the line; or any");
    for (const OrderPlace& place : Places) {
        text += HelpLine(place.Word, std::to_string(place.Low) + " to " + std::to_string(place.High) + ", " +
                                         std::string(place.Meaning));
    }
    return text + "Numbers may be written as 0x1F. What stands in brackets may be left out.\n";
}

} // namespace nrv::simulator
