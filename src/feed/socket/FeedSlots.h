#pragma once

namespace vx {

/// The places of the socket table, one per port of the feed client. Market depth and scans are never opened here.
enum EFeedSlot { kLevel1Slot, kMarketDepthSlot, kLookupSlot, kAdminSlot, kScansSlot, kFeedSlotCount };

} // namespace vx
