#pragma once

#include "vxconnect/Connection.h"
#include "vxconnect/Directory.h"

#include <string_view>

namespace vx::sim {

/// A client of the lookup port: each request is answered by a block of lines and an end marker.
class CLookupClient final : public CConnection {
public:
    /// The directory outlives the client.
    CLookupClient(qintptr socket, const SLink& link, CDirectory& directory)
        : CConnection(socket, link), m_directory(directory) {}

protected:
    void OnLine(std::string_view line) override;
    void OnOverlongLine() override;
    void OnEndOfInput() override { CloseWhenSent(); }

private:
    CDirectory& m_directory;
    bool m_tagged = false; // The client has set a protocol: replies carry a tag.
};

} // namespace vx::sim
