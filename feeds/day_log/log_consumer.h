// LogConsumer: what a server gives of a day's stream from one batch on, in the order of the stream.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include "feeds/day_log/nats_link.h"

// Asks for batches by the server's protocol for pulled consumers, and keeps one request open, so that a batch comes as
// soon as it is stored.
//
// NATS client 3.4.1: natsSubscription_Fetch writes behind the end of its list when batches of an earlier request come
// late; use it again when a fixed version is the floor.
class LogConsumer {
 public:
  using Milliseconds = std::chrono::milliseconds;

  struct Batch {
    NatsPtr<natsMsg> Message;
    std::uint64_t Number = 0;   // in the stream
    std::uint64_t Pending = 0;  // how many are behind it
  };

  // Makes the consumer on the server, which removes it some time after the last request. Throws FeedError.
  LogConsumer(NatsLink& link, const LogDay& day, std::uint64_t firstNumber);

  // The next batch; an empty Message if none comes in time. Throws FeedError if the consumer is of no use any more.
  Batch Next(Milliseconds atMost);

 private:
  void Ask();
  bool TakeStatus(natsMsg* message);

  NatsLink& Link;
  const LogDay Day;
  std::string Inbox;
  std::string RequestSubject;
  NatsPtr<natsSubscription> Subscription;
  std::size_t Awaited = 0;       // batches that were asked for and have not come
  std::size_t AverageBytes = 0;  // of the last batches; 0 before the first
};

struct BatchPlace {
  std::uint64_t Number = 0;
  std::uint64_t Pending = 0;
};
// Of the subject to which a batch would be acknowledged: $JS.ACK, perhaps domain and account, stream,
// consumer, deliveries, number in the stream, number for the consumer, time, number of batches behind it.
std::optional<BatchPlace> ParseBatchPlace(std::string_view replySubject) noexcept;
