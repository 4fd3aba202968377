#include "vxconnect/common/ClientLog.h"

#include "base/Log.h"

#include <algorithm>

namespace vx::sim {

namespace {

using enum ELogCategory;

ELogCategory ToldCategory(EPorts port, char first) {
    switch (port) {
    case kLevel1:
        return first == 'S' ? L1System : first == 'E' ? L1Error : L1Data;
    case kLookup:
        return first == 'E' || first == '!' ? LookupError : LookupData;
    default:
        return Admin;
    }
}

} // namespace

void CClientLog::Said(std::string_view line) const {
    Log(m_port == kLevel1 ? L1Request : m_port == kLookup ? LookupRequest : Admin, ELogDirection::FromClient, line);
}

void CClientLog::Told(std::string_view bytes) {
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        m_line.append(bytes.substr(0, end));
        if (end == bytes.size()) return;
        if (!m_line.empty()) Log(ToldCategory(m_port, m_line.front()), ELogDirection::ToClient, m_line);
        m_line.clear();
        bytes.remove_prefix(end + 1);
    }
}

} // namespace vx::sim
