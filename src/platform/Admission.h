#pragma once

#include <atomic>

namespace torvex {

/// How many may do something slow at a time, so that the others find workers free. Safe to share between
/// threads.
class Admission {
  public:
    explicit Admission(unsigned most) : most_(most) {}
    Admission(const Admission&) = delete;
    Admission& operator=(const Admission&) = delete;

    /// Throws `Error` at once when all places are taken: whoever waited here would hold what is to stay free.
    /// The place is given back when the pass goes; the object outlives its passes.
    class Pass {
      public:
        explicit Pass(Admission& admission);
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        ~Pass() { --admission_.inside_; }

      private:
        Admission& admission_;
    };

  private:
    const unsigned most_;
    std::atomic<unsigned> inside_ = 0;
};

}  // namespace torvex
