// Drawing text from several threads at once: through one shared font
// manager, and through a manager per thread.

#include <gtest/gtest.h>

#include <cstdint>
#include <thread>
#include <vector>

#include <vxbase/Device.h>
#include <vxbase/Dib.h>
#include <vxbase/Font.h>
#include <vxbase/Matrix.h>

#include "config.h"

namespace {

#ifdef HAVE_FONT_BACKEND

/// The bytes of a bitmap after drawing a few runs, at several sizes, with
/// characters from the named face and from a fallback face.
std::vector<std::uint8_t> DrawRuns(CCA_FontMgr* fontMgr) {
  CCA_Dib dib;
  EXPECT_TRUE(dib.Create(240, 50, CA_DibFormat_Argb32));
  CCA_Font font(fontMgr);
  font.LoadFont(L"DejaVu Sans", nullptr, 2, 700, 0);
  CCA_DibDevice device(&dib);
  for (int i = 0; i < 30; ++i) {
    CCA_Matrix matrix(1, 0, 0, 1, 2.0f + i % 2, 35);
    device.DrawText(L"Threads \u6c49\u5b57 AVA", -1, &font, 18.0f + i % 4, &matrix, 0xC0204060);
  }
  return std::vector<std::uint8_t>(dib.GetBuffer(), dib.GetBuffer() + dib.GetPitch() * dib.GetHeight());
}

TEST(CCA_DibDevice, ThreadsDrawAtOnceWithSharedAndOwnManagers) {
  const std::vector<std::uint8_t> alone = DrawRuns(nullptr);
  ASSERT_NE(std::vector<std::uint8_t>(alone.size(), 0), alone);
  CCA_FontMgr own[2];
  CCA_FontMgr* const managers[4] = {nullptr, nullptr, &own[0], &own[1]};
  std::vector<std::uint8_t> results[4];
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back([&, i] { results[i] = DrawRuns(managers[i]); });
  for (std::thread& thread : threads) thread.join();
  for (const std::vector<std::uint8_t>& result : results) EXPECT_TRUE(result == alone);
}

#endif

}  // namespace
