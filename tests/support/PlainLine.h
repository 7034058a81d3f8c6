#pragma once

#include "support/ClientLine.h"

namespace torvex::test {

/// Bytes as they are.
class PlainLine final : public ClientLine {
  public:
    explicit PlainLine(Descriptor socket) : socket_(std::move(socket)) {}

    void send(std::string_view bytes) override;
    std::optional<std::string> receive(std::chrono::milliseconds time) override;
    void endSending() override;
    int descriptor() const override { return socket_.number(); }

  private:
    Descriptor socket_;
};

}  // namespace torvex::test
