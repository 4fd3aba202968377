// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Connection.h"
#include "vxconnect/common/Feed.h"
#include "vxconnect/server/SearchIndex.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A client of the lookup port: each request is answered by a block of lines and an end marker.
class CLookupClient final : public CConnection {
public:
    /// The directory and its index outlive the client.
    CLookupClient(qintptr socket, const SLink& link, CDirectory& directory, CSearchIndex& index)
        : CConnection(socket, link), m_directory(directory), m_index(index) {}

protected:
    void OnLine(std::string_view line) override;
    void OnOverlongLine() override;
    void OnEndOfInput() override { CloseWhenSent(); }

private:
    CDirectory& m_directory;
    CSearchIndex& m_index;
    bool m_tagged = false; // The client has set a protocol: replies carry a tag.
};

} // namespace vx::sim
