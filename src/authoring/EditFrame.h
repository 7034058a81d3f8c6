#pragma once

#include <string>

#include "delivery/PageBodies.h"
#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;

/// The frames by which authors edit the bodies of a page, and what the page needs around them. Their calls go
/// to the frames of the authoring interface (`top.link`, `top.content`).
class EditFrame final : public BodyFrame {
  public:
    /// The words are those of the session's interface language.
    EditFrame(HostContext& host, db::Connection& connection, PageIdentity page);

    std::string around(const PageBody& body, std::string content) override;
    /// The page with the form that sends a body, ahead of its end.
    std::string withForm(std::string html) const;

  private:
    struct Words {
        std::string edit;
        std::string copy;
        std::string setup;
    };

    std::string header(const PageBody& body) const;
    std::string textLink(const PageBody& body) const;

    HostContext& host_;
    PageIdentity page_;
    Words words_;
};

}  // namespace torvex
