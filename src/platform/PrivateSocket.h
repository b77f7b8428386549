#pragma once

/// A new socket, as socket(2) opens it, of which no program that is started from this one gets a copy: a
/// connection ends with the one who made it. -1, with errno, if there can't be one. Any thread.
int openPrivateSocket(int family, int type, int protocol);
