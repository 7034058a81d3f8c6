#pragma once

#include <curl/curl.h>
#include <memory>
#include <mutex>

// What all clients on libcurl need of it.

namespace torvex::curl {

struct CloseEasy {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, CloseEasy>;
using List = std::unique_ptr<curl_slist, FreeList>;

/// Before the first handle; further calls do nothing.
inline void initialise() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

}  // namespace torvex::curl
