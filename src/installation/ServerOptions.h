#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "installation/StaticFileOptions.h"

namespace torvex {

/// How long each stage of a connection may take. All are total times of their stage, so that a sender who
/// drips one byte a second is cut off as surely as one who sends none.
struct Deadlines {
    /// For all of a request's header. Longer helps visitors on very bad lines, shorter frees slots sooner.
    std::chrono::milliseconds header{10'000};
    /// For all of a request's body: 2 MB at 70 KB/s. Uploads on slow lines need more.
    std::chrono::milliseconds body{30'000};
    /// Between two requests. Longer saves visitors handshakes, shorter saves memory under many visitors.
    std::chrono::milliseconds idle{60'000};
    /// Without any progress in writing an answer. Big files may take long in all, as long as they flow.
    std::chrono::milliseconds write{30'000};
    /// For the rest of a refused request, read and dropped so that the visitor sees the answer and no reset.
    std::chrono::milliseconds linger{2'000};
    /// For running requests when the server stops.
    std::chrono::milliseconds stop{10'000};
};

/// Below which visitors hold a connection for its own sake. Counted over a whole header, body or answer.
struct SpeedLimits {
    /// 0 takes everyone. The slowest lines of phones carry ten times as much.
    std::uint64_t bytesPerSecond = 500;
    /// Before the first look: lines that stall for a moment are no attack.
    std::chrono::milliseconds grace{5'000};
};

/// What one request may be. Bigger limits cost memory for each connection that uses them.
struct RequestLimits {
    std::size_t requestLine = 8 * 1024;  ///< links with long queries still fit
    std::size_t header = 16 * 1024;      ///< all of it, with the request line; cookies are the big part
    std::size_t fields = 100;            ///< header lines; each costs a look-up entry
    /// Where a page takes a body and sets no limit of its own. Nothing else takes one.
    std::uint64_t body = 2 * 1024 * 1024;
    /// Of one file that an author uploads; on its way it takes disk, not memory. One login has four times as
    /// much under way at most.
    std::uint64_t upload = 256 * 1024 * 1024;
    /// Of one form; each costs far more memory than its bytes. The largest form of the system has some
    /// dozens.
    std::size_t formFields = 1000;
    /// Of all requests together that are being read or answered. One address holds a quarter at most, but one
    /// body always.
    std::uint64_t bodies = 64 * 1024 * 1024;
};

/// How long sessions live and how many there may be. A session with nothing but defaults takes some 500
/// bytes.
struct SessionLimits {
    /// Since the last request of a visitor who sends the cookie back.
    std::chrono::milliseconds idle{20 * 60'000};
    /// The same while an author is logged in. Longer is kinder to authors who think, or have a meal; what a
    /// screen that was left open allows lasts as long.
    std::chrono::milliseconds authorIdle{60 * 60'000};
    /// For a session whose cookie has not come back: most are crawlers, which never return.
    std::chrono::milliseconds probation{2 * 60'000};
    /// Sessions on probation; the oldest goes first. Too few would lose visitors between their first two
    /// requests.
    std::size_t onProbation = 20'000;
    /// Sessions in all other states; the one idle for longest goes first, and those that nobody is logged in
    /// to before all others.
    std::size_t established = 200'000;
    /// Of both, those of one address (an IPv6 /64 is one) that nobody is logged in to; the one idle for
    /// longest goes first. Networks of phones have thousands of people behind one address; more would let a
    /// few addresses push out everybody else.
    std::size_t ofOneAddress = 5000;
    /// Requests of one session that wait for their turn; more are refused.
    std::size_t waiting = 64;
};

struct TlsFiles {
    std::string certificate;  ///< PEM, with the chain; "" serves plain HTTP
    std::string key;          ///< PEM
};

struct ServerOptions {
    /// Whom to serve as when the program is started as root; "" stays who starts it.
    std::string user;
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;  ///< 0 takes a free one
    TlsFiles tls;
    /// With a certificate: https is spoken on this port (0 takes a free one) beside http on `port`. Without
    /// it, https is spoken on `port` alone.
    std::optional<std::uint16_t> tlsPort{};
    /// HTTP/2 is spoken over TLS with whoever offers it; all others get HTTP/1.1.
    bool http2 = true;
    /// Marks cookies "Secure" although this server speaks plain HTTP: when TLS ends at a proxy in front.
    bool secureCookies = false;
    /// Whose X-Forwarded-For and X-Forwarded-Proto are believed: addresses and networks, as "10.0.0.0/8".
    std::vector<std::string> trustedProxies{};
    /// The names that are answered, as "www.example.org" and "*.example.org"; none answers for all.
    std::vector<std::string> hosts{};
    /// The name under which authors work; their addresses are answered there alone, and no public pages are.
    /// "" has both under all names.
    std::string authoringHost{};
    /// https is what the site is: whatever is asked over http is sent there.
    bool httpsAlone = false;
    /// How long browsers are told to ask over https alone, where `httpsAlone` holds; 0 tells them nothing.
    std::chrono::seconds strictTransport{31'536'000};
    /// What pages may ask of a browser, as its header field says it; "" says nothing.
    std::string permissionsPolicy =
        "camera=(), microphone=(), usb=(), browsing-topics=(), geolocation=(self), payment=(self)";

    /// Event loops; 0 is one for each core. They never wait, so more than the cores only adds switching.
    unsigned loops = 0;
    /// Threads that run pages; 0 is two for each core, at least four. Pages may wait for a feed or the
    /// database, so there are more of them than cores; each holds a database connection while it runs.
    unsigned workers = 0;
    /// Workers are added up to this number while others wait for something slow. More ride out more slow
    /// feeds, and hold more connections to the database.
    unsigned mostWorkers = 64;
    /// Pages waiting for a worker. A longer queue rides out peaks; one too long answers visitors who have
    /// left.
    std::size_t queuedPages = 1024;
    /// Open connections. For a further one the idlest goes; while all are busy, it is told to come back. Each
    /// takes some 6 KB and up to two file descriptors; there are never more than those allow.
    std::size_t connections = 4096;
    /// Of them, those of one address (an IPv6 /64 is one). An office behind one address needs six for each
    /// person at work; an attacker gets no more of the server than this.
    std::size_t connectionsOfOne = 256;

    /// Requests that a connection with HTTP/2 may have under way. Browsers ask for all that a page shows at once; each
    /// takes some KB until it is answered.
    std::size_t streams = 100;

    Deadlines deadlines;
    RequestLimits limits;
    SpeedLimits speed;
    SessionLimits sessions;

    /// The folder of the public files; "" serves none.
    std::string rootFolder;
    /// Files up to this size are kept in memory, each loop for itself, and answered in one write.
    std::size_t smallFile = 64 * 1024;
    std::size_t fileCache = 32 * 1024 * 1024;  ///< bytes for each loop; 0 keeps none
    std::string staticCacheControl = "public, max-age=300";
    /// Folders that authors upload to, as in addresses ("/images/"): nothing in them can run script on this
    /// site.
    std::vector<std::string> uploadFolders{};
    /// Types of files that are public besides those that are known.
    MediaTypes fileTypes{};
    /// Texts are compressed for whoever takes them so: public files once, pages each time.
    bool compression = true;
    /// Of memory for pages that visitors without a session share, as long as nothing has changed that they were made of; 0
    /// makes each page anew.
    std::size_t pageCache = 64 * 1024 * 1024;
    /// PostgreSQL tells of changes within a message's time. Whoever can't have a page of before that has it asked for
    /// each kept page, which takes a round trip; all who wait at one moment share it.
    bool pageCacheAsks = false;
};

}  // namespace torvex
