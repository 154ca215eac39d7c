#include "shell/screen_table.h"

#include "access/orintautil.h"
#include "config/diag.h"
#include "config/keshsetup.h"
#include "config/keshutil.h"
#include "config/orinparam.h"
#include "config/quorsetup.h"
#include "config/symbology.h"
#include "config/vellsetup.h"
#include "shell/com.h"
#include "shell/general.h"
#include "tools/asciichart.h"
#include "tools/hardware_test.h"
#include "tools/prottest.h"
#include "tools/term.h"

namespace {

template <typename ScreenType>
Screen* make(Services& services, QWidget* parent) {
  return new ScreenType(services, parent);
}

}  // namespace

const std::array<ScreenEntry, MenuState::entry_count> screen_table{{
    {"Communication", ScreenCode::com, make<ComScreen>},
    {"Vell Setup", ScreenCode::vellsetup, make<VellSetupScreen>},
    {"Orin/Orinta Setup", ScreenCode::orinparam, make<OrinParamScreen>},
    {"Kesh Setup", ScreenCode::keshsetup, make<KeshSetupScreen>},
    {"Quor Setup", ScreenCode::quorsetup, make<QuorSetupScreen>},
    {"Terminal Mode", ScreenCode::term, make<TermScreen>},
    {"Protocol Test", ScreenCode::prottest, make<ProtTestScreen>},
    {"Vell Hardware Test", ScreenCode::test, make<HardwareTestScreen>},
    {"Barcode/Mag Setup", ScreenCode::symbology, make<SymbologyScreen>},
    {"Diagnostics", ScreenCode::diag, make<DiagScreen>},
    {"Orin/Orinta Utilities", ScreenCode::orintautil, make<OrintaUtilScreen>},
    {"Kesh/Quor Utilities", ScreenCode::keshutil, make<KeshUtilScreen>},
    {"ASCII Chart", ScreenCode::asciichart, make<AsciiChartScreen>},
    {"General Info", ScreenCode::general, make<GeneralScreen>},
}};
