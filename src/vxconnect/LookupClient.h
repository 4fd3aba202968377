#pragma once

#include "vxconnect/Connection.h"

#include <string_view>

namespace vx::sim {

/// A client of the lookup port: each request is answered by a block of lines and an end marker.
class CLookupClient final : public CConnection {
public:
    CLookupClient(qintptr socket, size_t queueLimit) : CConnection(socket, queueLimit) {}

protected:
    void OnLine(std::string_view line) override;
    void OnOverlongLine() override;
    void OnEndOfInput() override { CloseWhenSent(); }
};

} // namespace vx::sim
