// PluginDescription: what a plug-in tells of itself when it is loaded: who it is, its menu entry and the messages that
// it asks for. Not the calls into it (plugin_link.h). Pure; any thread.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>

// A list of message numbers that go to one function of the plug-in.
struct MessageRoute {
  std::uint64_t Address = 0;  // 0: the list did not come
  std::set<std::uint16_t> Numbers;
};

struct PluginDescription {
  // 30004
  std::string Name;
  std::string Copyright;
  std::string Maker;
  // 30005
  std::u16string MenuTitle;
  std::u16string MenuEntry;
  std::uint64_t MenuCommand = 0;
  std::uint8_t MenuKey = 0;  // virtual-key code
  // 30006: to OnMessage, and the pair of a download: the request that starts it and the number that ends it
  MessageRoute ToOnMessage;
  std::uint16_t DownloadRequest = 0;
  std::uint16_t DownloadEnd = 0;
  // 30007: to OnPluginMessage
  MessageRoute ToOnPluginMessage;
};

// Reads the messages that GetDllInfo appended, one after the other; unknown ones, and unknown fields, are passed over.
PluginDescription ReadPluginDescription(std::span<const std::uint8_t> reply);
