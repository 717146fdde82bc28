#include "feeds/settings/settings_table.h"

namespace {

template <auto... Members>
constexpr auto Field = [](FeedSettings& settings) -> auto& {
  return (settings.*....*Members);
};

using S = FixEngineSettings;
using L = LogAccess;
using M = MappingChoices;
using F = FeedSettings;
using Kind = SettingKind;
constexpr bool kRequired = true;
constexpr int kMostTag = 65535;  // roles have it as well

template <typename T, auto... Members>
constexpr FieldOf<T> At = +Field<Members...>;
template <auto Member>
constexpr auto SessionText = At<std::string, &F::Session, Member>;
template <auto Member>
constexpr auto SessionNumber = At<int, &F::Session, Member>;
template <auto Member>
constexpr auto LogPath = At<std::filesystem::path, &F::Log, Member>;
template <auto Member>
constexpr auto MappingNumber = At<std::uint16_t, &F::Mapping, Member>;

constexpr SettingKey kKeys[] = {
    {"session", "version", Kind::Version, SessionText<&S::BeginString>, "FIX.4.4",
     "The version of FIX: FIX.4.2, FIX.4.4, or FIXT.1.1 (which carries FIX 5.0 SP2)."},
    {"session", "sender_comp_id", Kind::Text, SessionText<&S::SenderCompID>, "",
     "Your name and the broker's in this session. The broker assigns both.", kRequired},
    {"session", "target_comp_id", Kind::Text, SessionText<&S::TargetCompID>, "", "", kRequired},
    {"session", "host", Kind::Text, SessionText<&S::Host>, "", "Where the broker's FIX server listens.", kRequired},
    {"session", "port", Kind::Number, SessionNumber<&S::Port>, "", "", kRequired, 1, 65535},
    {"session", "username", Kind::Text, SessionText<&S::Username>, "",
     "Sent in the logon (553 and 554) if not empty. The password is the first line of a file that only you may read:\n"
     "chmod 600 FILE."},
    {"session", "password_file", Kind::Secret, SessionText<&S::Password>, "", ""},
    {"session", "start_time", Kind::Time, SessionText<&S::StartTime>, "00:00:00",
     "When the session begins and ends each day, in UTC. Numbers begin at 1 again at the start; equal times mean "
     "around\n"
     "the clock, from midnight to midnight. A journal has the date on which its session ends."},
    {"session", "end_time", Kind::Time, SessionText<&S::EndTime>, "00:00:00", ""},
    {"session", "start_day", Kind::Day, SessionText<&S::StartDay>, "",
     "For a session of a week: the days on which it begins and ends, like sunday and friday. A new journal begins at "
     "the\n"
     "end time of each day, and the numbers go on."},
    {"session", "end_day", Kind::Day, SessionText<&S::EndDay>, "", ""},
    {"session", "heartbeat_seconds", Kind::Number, SessionNumber<&S::HeartbeatSeconds>, "30",
     "A lost connection is noticed after about twice this time.", false, 1, 3600},
    {"session", "reconnect_seconds", Kind::Number, SessionNumber<&S::ReconnectSeconds>, "5",
     "How long to wait before connecting again.", false, 1, 3600},
    {"session", "reset_on_logon", Kind::YesNo, At<bool, &F::Session, &S::ResetOnLogon>, "no",
     "yes only if the broker demands that numbers begin at 1 with each logon: what came meanwhile is then not sent\n"
     "again."},
    {"session", "dictionary", Kind::File, SessionText<&S::Dictionary>, "",
     "A data dictionary in QuickFIX's format. Without one, messages are accepted as they come, with any fields. With\n"
     "one, a message that breaks its rules is refused, kept in the journal, and not shown as a trade."},

    {"tls", "use", Kind::YesNo, At<bool, &F::Session, &S::Tls>, "no", "yes to encrypt the session."},
    {"tls", "host", Kind::Text, SessionText<&S::TlsHost>, "",
     "The name that the broker's certificate must have; empty for the session's host."},
    {"tls", "authorities", Kind::File, SessionText<&S::TlsAuthorities>, "",
     "PEM file with the authorities that may have signed it; empty for those of the system."},
    {"tls", "certificate", Kind::File, SessionText<&S::TlsCertificate>, "",
     "PEM files of your own certificate and its key, if the broker demands one. Only you may read the key."},
    {"tls", "key", Kind::SecretFile, SessionText<&S::TlsKey>, "", ""},

    {"journal", "folder", Kind::Folder, At<std::filesystem::path, &F::JournalFolder>, "journal",
     "Where the journals of the days are kept. They are the truth: put them on a disk of your own."},

    {"log", "servers", Kind::Servers, At<std::string, &F::Log, &L::Servers>, "",
     "The servers of the day log: nats://one:4222,nats://two:4222 or tls://... Empty: the journal alone."},
    {"log", "name", Kind::LogName, At<std::string, &F::LogName>, "trades",
     "What the log of a day is named after: the stream TRADES_20260301 with the subject trades.20260301."},
    {"log", "replicas", Kind::Number, At<int, &F::LogReplicas>, "1",
     "On how many servers of a cluster each day is kept.", false, 1, 5},
    {"log", "user", Kind::Text, At<std::string, &F::Log, &L::User>, "",
     "Either a user with a password (the first line of a file that only you may read), or a credentials file."},
    {"log", "password_file", Kind::SecretFile, LogPath<&L::PasswordFile>, "", ""},
    {"log", "credentials_file", Kind::SecretFile, LogPath<&L::CredentialsFile>, "", ""},
    {"log", "authorities", Kind::File, LogPath<&L::Authorities>, "",
     "PEM file with the authorities of the servers' certificates; empty for those of the system."},

    {"mapping", "exchange", Kind::Text, At<std::string, &F::Mapping, &M::Exchange>, "",
     "The exchange of reports that name none (207, 30)."},
    {"mapping", "client_tag", Kind::Number, MappingNumber<&M::ClientTag>, "",
     "Tags that this broker uses for the client, the user and the CTCL id, if not the usual ones.", false, 1, kMostTag},
    {"mapping", "user_tag", Kind::Number, MappingNumber<&M::UserTag>, "", "", false, 1, kMostTag},
    {"mapping", "ctcl_tag", Kind::Number, MappingNumber<&M::CtclTag>, "", "", false, 1, kMostTag},
    {"mapping", "member_role", Kind::Number, MappingNumber<&M::MemberRole>, "",
     "Roles (452) of the parties that are the member, the user and the CTCL id. Empty: 1, the executing firm; 12, the\n"
     "executing trader, else 36, the entering one; 38, the position account.",
     false, 1, kMostTag},
    {"mapping", "user_role", Kind::Number, MappingNumber<&M::UserRole>, "", "", false, 1, kMostTag},
    {"mapping", "ctcl_role", Kind::Number, MappingNumber<&M::CtclRole>, "", "", false, 1, kMostTag},
    {"mapping", "user_id", Kind::Text, At<std::string, &F::Mapping, &M::UserID>, "",
     "The user of reports that name none."},
    {"mapping", "multiplier", Kind::Decimal, At<double, &F::Mapping, &M::Multiplier>, "1",
     "The contract multiplier of reports that have none (231)."},
};

}  // namespace

std::span<const SettingKey> SettingKeys() noexcept {
  return kKeys;
}
