#pragma once

class Look;
struct MessageRowModel;

/// A guess of the height that a MessageRow takes in that width, in device-independent pixels, from the length
/// of its texts alone: so that the thousands of rows out of sight need no widget.
int estimatedRowHeight(const Look &look, const MessageRowModel &model, int width);
