#include "platform/assert.h"
#include "truck/truck.h"
#include "truck/truckreport.h"

/// A truck file: whatever it says, the truck that comes of it writes a file that reads back to the same file.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  CTruck truck;
  truck.Parse({reinterpret_cast<const char*>(data), size});
  const std::string text = truck.FileText();
  CTruck again;
  again.Parse(text);
  VELDRA_ASSERT(again.FileText() == text);
  VELDRA_ASSERT(truck.GetDependencies().textures.size() == truck.GetDependencies().palettes.size());
  VELDRA_ASSERT(!TruckJson(truck).empty() && !TruckText(truck).empty());
  return 0;
}
