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
    {"Communication", "com", ScreenCode::com, make<ComScreen>},
    {"Vell Setup", "vellsetup", ScreenCode::vellsetup, make<VellSetupScreen>},
    {"Orin/Orinta Setup", "orinparam", ScreenCode::orinparam, make<OrinParamScreen>},
    {"Kesh Setup", "keshsetup", ScreenCode::keshsetup, make<KeshSetupScreen>},
    {"Quor Setup", "quorsetup", ScreenCode::quorsetup, make<QuorSetupScreen>},
    {"Terminal Mode", "term", ScreenCode::term, make<TermScreen>},
    {"Protocol Test", "prottest", ScreenCode::prottest, make<ProttestScreen>},
    {"Vell Hardware Test", "test", ScreenCode::test, make<HardwareTestScreen>},
    {"Barcode/Mag Setup", "symbology", ScreenCode::symbology, make<SymbologyScreen>},
    {"Diagnostics", "diag", ScreenCode::diag, make<DiagScreen>},
    {"Orin/Orinta Utilities", "orintautil", ScreenCode::orintautil, make<OrintautilScreen>},
    {"Kesh/Quor Utilities", "keshutil", ScreenCode::keshutil, make<KeshUtilScreen>},
    {"ASCII Chart", "asciichart", ScreenCode::asciichart, make<AsciichartScreen>},
    {"General Info", "general", ScreenCode::general, make<GeneralScreen>},
}};
