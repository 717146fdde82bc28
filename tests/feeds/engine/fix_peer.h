// FixPeer: the other side of a FIX session, message by message, as a test wants it. Nothing of an engine.
#pragma once

#include <memory>
#include <string>
#include <string_view>

// Listens on a free port of loopback. Every wait is bounded; what does not come in time throws.
class FixPeer {
 public:
  explicit FixPeer(std::string beginString = "FIX.4.4");
  // The same with TLS, with a PEM file of certificate and key.
  FixPeer(std::string beginString, const std::string& pemFile);
  ~FixPeer();

  int Port() const;
  // With TLS: refuses who has no certificate that one of the file signed.
  void DemandCertificate(const std::string& authoritiesFile);
  // Takes a connection, and with TLS shakes hands; false if the initiator broke that off.
  bool Accept();
  // The next message; empty text if the connection has ended.
  std::string Read();
  // The next message of that type; others before it are passed over.
  std::string Read(std::string_view type);
  void Close();
  // Accept, and a logon answered with one of that number. Gives the initiator's.
  std::string LogOn(unsigned number, std::string_view fields = {});

  // Gives the message as it was sent; in fields '|' stands for the end of a field.
  std::string Send(std::string_view type, unsigned number, std::string_view fields = {},
                   std::string_view sender = "VENUE");
  void SendRaw(std::string_view text);
  void SendPlain(std::string_view bytes);  // beside TLS
  std::string Make(std::string_view type, unsigned number, std::string_view fields, std::string_view sender) const;

 private:
  struct State;
  std::unique_ptr<State> Self;
};
