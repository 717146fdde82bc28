#include <cstdlib>

#include "tests/feeds/engine/engine_session.h"

// QuickFIX 1.15 leaks connections whose handshake fails, and the list of authorities: all of OpenSSL's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libcrypto.so\nleak:libssl.so\n";
}

namespace {

class FixEngineTls : public OwnFolder {
 protected:
  // A certificate that signs itself, with its key.
  std::string MakeCertificate(const std::string& name, const std::string& alternative) {
    const std::string pem = (Folder / (name + ".pem")).string();
    const std::string command =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=" + name +
        " -addext subjectAltName=" + alternative + " -keyout '" + pem + ".key' -out '" + pem +
        "' 2>/dev/null && cat '" + pem + ".key' >> '" + pem + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return pem;
  }
};

TEST_F(FixEngineTls, WantsTheNameAndTheAuthority) {
  const std::string right = MakeCertificate("right", "DNS:fix.example");
  const std::string wrong = MakeCertificate("wrong", "DNS:other.example");
  const std::string address = MakeCertificate("address", "IP:127.0.0.1");
  const struct {
    std::string Certificate, Authorities, Host, Refusal;
  } cases[] = {
      {right, right, "fix.example", ""},
      {wrong, wrong, "fix.example", "its certificate is refused: hostname mismatch"},
      {right, wrong, "fix.example", "its certificate is refused: self-signed certificate"},
      {address, address, "", ""},
      {right, right, "", "its certificate is refused: IP address mismatch"},
      {right, right, "example", "its certificate is refused: hostname mismatch"},
      {right, "", "fix.example", "its certificate is refused: self-signed certificate"},
  };
  for (const auto& [certificate, authorities, host, refusal] : cases) {
    SCOPED_TRACE(certificate + " by " + authorities + " as " + host);
    FixPeer peer("FIX.4.4", certificate);
    Session session(peer);
    session.Settings.Tls = true;
    session.Settings.TlsHost = host;
    session.Settings.TlsAuthorities = authorities;
    session.Start();
    if (refusal.empty()) {
      peer.LogOn(1);
      peer.Send("8", 2, "17=2|");
      EXPECT_TRUE(session.HasTarget(3));
    } else {
      EXPECT_TRUE(!peer.Accept() || peer.Read().empty());
      EXPECT_TRUE(
          session.Venue.IsTold("no session with VENUE at 127.0.0.1:" + std::to_string(peer.Port()) + ": " + refusal));
    }
  }
}

TEST_F(FixEngineTls, ShowsItsOwnCertificate) {
  const std::string venue = MakeCertificate("venue", "IP:127.0.0.1"), desk = MakeCertificate("desk", "DNS:desk");
  const std::string stranger = MakeCertificate("stranger", "DNS:desk");
  for (const std::string& own : {desk, stranger, std::string()}) {
    SCOPED_TRACE(own);
    FixPeer peer("FIX.4.4", venue);
    peer.DemandCertificate(desk);
    Session session(peer);
    session.Settings.Tls = true;
    session.Settings.TlsAuthorities = venue;
    session.Settings.TlsCertificate = own;
    if (!own.empty()) session.Settings.TlsKey = own + ".key";
    session.Start();
    if (own == desk) {
      peer.LogOn(1);
      peer.Send("8", 2, "17=2|");
      EXPECT_TRUE(session.HasTarget(3));
    } else {
      EXPECT_FALSE(peer.Accept());
      EXPECT_TRUE(session.Venue.IsTold("no session with VENUE at 127.0.0.1:" + std::to_string(peer.Port())));
    }
  }
}

TEST_F(FixEngineTls, StopsBesideACounterpartyThatStopsInTheMiddle) {
  const std::string pem = MakeCertificate("right", "IP:127.0.0.1");
  for (const bool isLoggedOn : {false, true}) {
    SCOPED_TRACE(isLoggedOn);
    FixPeer peer("FIX.4.4", pem);
    Session session(peer);
    session.Settings.Tls = true;
    session.Settings.TlsAuthorities = pem;
    session.Start();
    if (isLoggedOn) {
      peer.LogOn(1);
      ASSERT_TRUE(session.HasTarget(2));
      peer.SendPlain(std::string("\x17\x03\x03\x01\x00", 5));  // a record of 256 bytes without them
    }
    EXPECT_TRUE(session.Venue.IsTold(isLoggedOn ? "logged on" : "connecting"));
    session.Engine->Stop();
  }
}

TEST_F(FixEngineTls, WantsAuthoritiesAndTheKeyOfItsCertificate) {
  FixPeer peer;
  Session session(peer);
  session.Settings.Tls = true;
  session.Settings.TlsAuthorities = (Folder / "none").string();
  EXPECT_THROW(session.Start(), std::runtime_error);
  WriteFile(Folder / "none", "not PEM");
  EXPECT_THROW(session.Start(), std::runtime_error);
  session.Settings.TlsAuthorities = MakeCertificate("one", "DNS:one");
  session.Settings.TlsCertificate = (Folder / "none").string();
  EXPECT_THROW(session.Start(), std::runtime_error);
  session.Settings.TlsCertificate = session.Settings.TlsAuthorities;
  session.Settings.TlsKey = MakeCertificate("other", "DNS:one") + ".key";
  EXPECT_THROW(session.Start(), std::runtime_error);
}

}  // namespace
