#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

namespace host {
class Tool;
class Tools;
} // namespace host

// What Tool Data knows about tools and machines, apart from its dialog.
namespace marelon {

using ToolPtr = std::shared_ptr<host::Tool>;

// The technology parameter of a tool that holds its length-offset number.
inline const QString kLengthCompParameter = QStringLiteral("121");

// The tool's length-offset number (its technology parameter "121").
double GetToolLengthComp(host::Tool& tool);

// Milling kinds are below 15, and 20; every other kind is a lathe tool.
bool IsMillTool(host::Tool& tool);
bool IsLatheTool(host::Tool& tool);

// The sort key of a tool: tool number × 100 + length-offset number, rounded
// half to even (tool 3 offset 3 is 303, tool 12 offset 1 is 1201). The key is
// 32 bits wide: a 16-bit key would overflow from tool number 328 on, and the
// wider key orders every tool whose key fits 16 bits exactly as the narrow
// one would. Keys beyond 32 bits are clamped to its ends.
int32_t ToolNumber(host::Tool& tool);

// The document's tools in ascending key order, by a Shell sort (not stable:
// tools with equal keys come in no guaranteed order).
QList<ToolPtr> SortTools(host::Tools& tools);

// The tool's own contribution to its shift, from its geometry, in the tool's
// units (X as a diameter). A field without a value keeps what it shows.
struct ToolShiftFields {
    std::optional<double> x, z, y;
};
ToolShiftFields ToolShiftFromGeometry(host::Tool& tool);

} // namespace marelon
