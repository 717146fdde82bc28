// NatsLink: one connection to the servers of a day log, its streams, and sentences for what goes wrong there.
#pragma once

#include <nats/nats.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_address.h"

// How long a request may take: a cluster that chooses a new leader is silent for seconds.
inline constexpr std::chrono::milliseconds kLogAnswerTime(5000);

// A FeedError that another try may cure: servers that are silent, away or not ready.
class LogTrouble : public FeedError {
 public:
  using FeedError::FeedError;
};

// Objects of the NATS client that end by themselves.
struct NatsEnd {
  void operator()(natsOptions* object) const noexcept { natsOptions_Destroy(object); }
  void operator()(natsConnection* object) const noexcept { natsConnection_Destroy(object); }
  void operator()(natsSubscription* object) const noexcept { natsSubscription_Destroy(object); }
  void operator()(natsMsg* object) const noexcept { natsMsg_Destroy(object); }
  void operator()(jsCtx* object) const noexcept { jsCtx_Destroy(object); }
  void operator()(jsStreamInfo* object) const noexcept { jsStreamInfo_Destroy(object); }
  void operator()(jsPubAck* object) const noexcept { jsPubAck_Destroy(object); }
  void operator()(jsConsumerInfo* object) const noexcept { jsConsumerInfo_Destroy(object); }
};
template <typename Object>
using NatsPtr = std::unique_ptr<Object, NatsEnd>;

// Never reconnects by itself: the client keeps requests of a lost connection and sends them later, and its
// subscriptions may stall then. So a lost connection is closed, and its owner connects anew.
class NatsLink {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit NatsLink(LogAccess access) : Access(std::move(access)) {}

  // Connects to one of the servers, with each call to the next one, beginning with any: desks spread over them. Waits
  // at most that long. Throws FeedError.
  void Connect(Milliseconds atMost);
  void Close() noexcept;
  // For good, from any thread: what waits for the servers fails, as does every later Connect.
  void Cancel() noexcept;
  bool IsConnected() const noexcept;
  natsConnection* Client() const noexcept { return Connection.get(); }
  jsCtx* Stream() const noexcept { return Context.get(); }
  // "desk-log:4222": connected to, or tried last.
  const std::string& Server() const noexcept { return ServerName; }

  // What is known of the stream; null if there is none. Throws FeedError.
  NatsPtr<jsStreamInfo> StreamInfo(const LogDay& day, Milliseconds atMost);
  // Throws LogTrouble, or FeedError if the user is refused. `what` is "the log cannot be read".
  [[noreturn]] void Fail(const std::string& what, natsStatus status, jsErrCode code = jsErrCode(0)) const;

 private:
  NatsPtr<natsOptions> Options(const std::string& server, Milliseconds atMost) const;

  LogAccess Access;
  std::vector<std::string> Servers;
  std::size_t NextServer = 0;
  std::string ServerName;
  std::mutex Guard;  // of the two that Cancel uses; the owner's thread alone changes the connection
  bool Cancelled = false;
  NatsPtr<natsConnection> Connection;
  NatsPtr<jsCtx> Context;
};
