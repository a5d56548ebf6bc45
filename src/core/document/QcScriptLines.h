// The lines of the script's directives, as a save writes them from the
// records. A record read from a script keeps its own text for each value the
// user did not change: the number as the script wrote it, the axis word in
// its case, the attachment's index as written.
#pragma once

#include "document/Document.h"
#include "document/ScriptLayout.h"

#include <string>
#include <vector>

namespace quarle {

std::string_view AxisWord(f32 axis);

// A body group or animation name: bare where the compiler reads it back so
// (the writer's own form), else in quotes.
std::string NameToken(std::string_view name);

std::string SequenceLine(const AnimRec& anim, char decimalSeparator);
std::vector<std::string> BodyGroupLines(const BodyGroupRec& group);

std::string AttachmentLine(const Document& doc, int slot, const AttachmentRead* read);
std::string ControllerLine(const Document& doc, int slot, const ControllerRead* read,
                           char decimalSeparator);
std::string RenderModeLine(const TextureModeRec& mode, const RenderModeRead* read);

// The single-valued settings; read holds their values and text as a load
// found them (null for a document no script was read into).
std::string ScaleLine(const Document& doc, const SettingsRead* read);
std::string GammaLine(const Document& doc, const SettingsRead* read);
std::string EyePositionLine(const Document& doc, const SettingsRead* read, char decimalSeparator);
std::string SequenceGroupSizeLine(const Document& doc, const SettingsRead* read);

} // namespace quarle
