#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// What is published of a page, as far as its copy for the catalogue needs it.
struct LivePage {
    PageId pageId = 0;
    std::string nodeId;
    std::string type;
    std::string title;
    int templateId = 0;
    std::string templateFile;

    bool isFolder() const;
};

/// Visits the live page of a node; none there is none.
void visitLivePage(db::Connection& connection, std::string_view nodeId,
                   const std::function<void(const LivePage&)>& visit);

/// Visits all live pages but those of system branches, in the order of their nodes. Reads some hundred at a
/// time: neither are they all held at once, nor does a reading stay open for as long as the visits take.
void visitLivePages(db::Connection& connection, const std::function<void(const LivePage&)>& visit);

/// How many `visitLivePages` visits.
std::int64_t countLivePages(db::Connection& connection);

/// Whether a page of this node is live, no folder, and no page of a system branch.
bool hasLiveContent(db::Connection& connection, std::string_view nodeId);

}  // namespace torvex
