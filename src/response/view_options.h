#pragma once

#include "model/command_context.h"

namespace nrv::response {

class Response;

// Settings of the window alone: no frame goes out.

/// Shows or hides all markers of a channel, 0 to 7, by its "Show cursor" box.
void ShowCursor(const model::CommandContext& context, int channel);

/// The view box of a row, 0 to 4, on the tab of an output, 0 to 5, was changed: the curve of the output that it names
/// lies over this one's graph or not.
void ViewOverlay(const model::CommandContext& context, Response& response, int output, int row);

/// A view option, 0 to 17, three to an output, was chosen: the output's graph follows, and the image keeps the choice.
void ChooseViewMode(const model::CommandContext& context, Response& response, int option);

/// `OverlayMatrix` and `ViewMode` belong to the program, and another window may have changed them: brings what the
/// current window shows of them into line, running no event and storing nothing, and draws its outputs anew if that was
/// not so.
void ShowSharedViews(const model::CommandContext& context, Response& response);

} // namespace nrv::response
