#pragma once

/// Gives back the upper halves of the processor's vector registers, where it has such. The toolkit fills
/// areas with them and leaves them in use (Qt 6.4); some processors then take up to thrice the time for other
/// work of the same thread. Any thread.
void releaseWideRegisters();
