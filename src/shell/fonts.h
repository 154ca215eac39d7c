#pragma once

#include <QFont>

/// The fonts of the program. Where a named family is missing, the metric-compatible one stands in.
namespace fonts {

/// "Times New Roman": menu, headings and help.
[[nodiscard]] QFont serif(qreal points);
/// "Courier New": whatever shows characters of the wire.
[[nodiscard]] QFont fixed(qreal points);

}  // namespace fonts
