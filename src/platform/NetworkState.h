#pragma once

/// True while this machine has an interface beside the loopback that is up, runs and has an Internet
/// address. It doesn't tell whether anything can be reached over it; true also if the system can't tell.
/// Any thread.
bool hasNetwork();
