#include "tool/parameters.h"

namespace nrv::tool {
namespace {

const controls::FrmCtrl& Lists() {
    static const controls::FrmCtrl form;
    return form;
}

} // namespace

std::vector<presets::Field> FieldsOf(presets::Parameter parameter, const model::PresetImageRow& image) {
    return presets::FieldsOf(parameter, image, Lists());
}

std::vector<presets::CodePlace> CodesOf(presets::Parameter parameter) {
    return presets::CodesOf(parameter, Lists());
}

std::string ChangeInWords(presets::Parameter parameter, const model::PresetImageRow& from,
                          const model::PresetImageRow& to) {
    return presets::ChangeInWords(parameter, from, to, Lists());
}

} // namespace nrv::tool
