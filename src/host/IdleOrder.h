#pragma once

#include <boost/intrusive/list.hpp>
#include <cstddef>

namespace torvex {

class LoopConnection;

/// A place in an order; a connection leaves it by itself when it ends. Two tags, as a connection stands in
/// two orders: its loop's and its address's.
template <class Tag>
using OrderHook =
    boost::intrusive::list_base_hook<boost::intrusive::tag<Tag>,
                                     boost::intrusive::link_mode<boost::intrusive::auto_unlink>>;
struct OfLoop;
struct OfPeer;

/// Connections by how long nothing has moved on them, the idlest first. One thread uses it; nothing is
/// allocated.
template <class Tag>
struct IdleOrder {
    using List = boost::intrusive::list<LoopConnection, boost::intrusive::base_hook<OrderHook<Tag>>,
                                        boost::intrusive::constant_time_size<false>>;

    List resting;   ///< kept for a further request: they lose nothing when they go
    List underWay;  ///< in the middle of a request or an answer
};

}  // namespace torvex
