// The three functions that the module exports, and the callbacks whose addresses travel in its messages. A terminal
// looks the three up by name and calls them, and the callbacks, one call at a time.
#pragma once

#include <cstdint>

class CQORPacketReader;
struct HostReplyBuffer;

// Appends the module's description to reply: message 30004, and 30005 to 30007 where the byte at infoOnly is 0.
using GetDllInfoFunction = void (*)(HostReplyBuffer* reply, const std::uint8_t* infoOnly);
// OnMessage takes a message whose header has been parsed, OnPluginMessage a raw one.
using MessageFunction = void (*)(CQORPacketReader* message);
// The menu command of message 30005 and the refresh callback of message 32005.
using CommandFunction = void (*)();
