#include "feeds/day_log/log_consumer.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace {

constexpr std::chrono::nanoseconds kRequestTime = std::chrono::seconds(10);
constexpr std::chrono::nanoseconds kKeptUnused = std::chrono::seconds(30);
constexpr std::size_t kAskedBytes = 2 * 1024 * 1024;
constexpr std::size_t kMostAsked = 1024;

bool ParseNumber(std::string_view text, std::uint64_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

std::optional<BatchPlace> ParseBatchPlace(std::string_view replySubject) noexcept {
  constexpr std::size_t kShort = 9, kLong = 11, kMost = 12;
  std::string_view words[kMost];
  std::size_t count = 0;
  for (bool more = true; more && count < kMost; ++count) {
    const std::size_t end = std::min(replySubject.find('.'), replySubject.size());
    words[count] = replySubject.substr(0, end);
    more = end < replySubject.size();
    replySubject.remove_prefix(std::min(end + 1, replySubject.size()));
  }
  if ((count != kShort && count < kLong) || words[0] != "$JS" || words[1] != "ACK") return std::nullopt;
  const std::size_t before = count == kShort ? 0 : kLong - kShort;
  BatchPlace place;
  if (!ParseNumber(words[before + 5], place.Number) || !ParseNumber(words[before + 8], place.Pending))
    return std::nullopt;
  return place;
}

LogConsumer::LogConsumer(NatsLink& link, const LogDay& day, std::uint64_t firstNumber) : Link(link), Day(day) {
  const std::string stream = day.Stream();
  const std::string subject = day.Subject();
  const std::string what = "the log " + subject + " cannot be read";
  natsInbox* inbox = nullptr;
  natsSubscription* subscription = nullptr;
  natsStatus status = natsInbox_Create(&inbox);
  if (status == NATS_OK) Inbox = inbox;
  natsInbox_Destroy(inbox);
  if (status == NATS_OK) status = natsConnection_SubscribeSync(&subscription, link.Client(), Inbox.c_str());
  Subscription.reset(subscription);
  if (status != NATS_OK) link.Fail(what, status);
  jsConsumerConfig config;
  jsConsumerConfig_Init(&config);
  config.AckPolicy = js_AckNone;
  config.DeliverPolicy = js_DeliverByStartSequence;
  config.OptStartSeq = firstNumber;
  config.FilterSubject = subject.c_str();
  config.InactiveThreshold = kKeptUnused.count();
  config.MemoryStorage = true;
  config.Replicas = 1;
  jsConsumerInfo* got = nullptr;
  jsErrCode code = jsErrCode(0);
  status = js_AddConsumer(&got, link.Stream(), stream.c_str(), &config, nullptr, &code);
  const NatsPtr<jsConsumerInfo> info(got);
  if (status != NATS_OK) link.Fail(what, status, code);
  RequestSubject = "$JS.API.CONSUMER.MSG.NEXT." + stream + "." + info->Name;
}

void LogConsumer::Ask() {
  Awaited = AverageBytes == 0 ? 1 : std::clamp<std::size_t>(kAskedBytes / AverageBytes, 1, kMostAsked);
  const std::string request =
      "{\"batch\":" + std::to_string(Awaited) + ",\"expires\":" + std::to_string(kRequestTime.count()) + "}";
  const natsStatus status =
      natsConnection_PublishRequestString(Link.Client(), RequestSubject.c_str(), Inbox.c_str(), request.c_str());
  if (status != NATS_OK) Link.Fail("the log " + Day.Subject() + " cannot be read", status);
}

// True for what is no batch but a word of the server about the request.
bool LogConsumer::TakeStatus(natsMsg* message) {
  const char* text = nullptr;
  if (natsMsgHeader_Get(message, "Status", &text) != NATS_OK || natsMsg_GetReply(message) != nullptr) return false;
  const std::string word = text != nullptr ? text : "";
  // 408: the request's time is over. Anything else, such as 409 for a removed consumer, ends this one.
  if (!word.starts_with("408"))
    throw LogTrouble(Link.Server() + ": the log " + Day.Subject() + " has to be read anew: status " + word);
  Awaited = 0;
  return true;
}

LogConsumer::Batch LogConsumer::Next(Milliseconds atMost) {
  if (Awaited == 0) Ask();
  natsMsg* got = nullptr;
  const natsStatus status =
      natsSubscription_NextMsg(&got, Subscription.get(), std::max<std::int64_t>(atMost.count(), 0));
  Batch batch{.Message = NatsPtr<natsMsg>(got)};
  if (status == NATS_TIMEOUT) return {};
  if (status != NATS_OK) Link.Fail("the log " + Day.Subject() + " cannot be read", status);
  if (TakeStatus(got)) return {};
  const char* reply = natsMsg_GetReply(got);
  const std::optional<BatchPlace> place = ParseBatchPlace(reply != nullptr ? reply : "");
  if (!place) return {};
  if (Awaited > 0) --Awaited;
  AverageBytes = (3 * AverageBytes + static_cast<std::size_t>(natsMsg_GetDataLength(got))) / 4 + 1;
  batch.Number = place->Number;
  batch.Pending = place->Pending;
  return batch;
}
