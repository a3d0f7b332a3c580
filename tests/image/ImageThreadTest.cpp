// Codecs share no state: several threads coding at once each get their own
// image back.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "image/ImageTestSupport.h"

namespace {

TEST(ImageThreads, EveryFormatCodesOnFourThreadsAtOnce) {
  const CA_ImageFormat formats[] = {CA_ImageFormat_BMP, CA_ImageFormat_PNG, CA_ImageFormat_JPEG,
                                    CA_ImageFormat_TIF, CA_ImageFormat_GIF, CA_ImageFormat_JPEG2000};
  std::atomic<int> mismatches{0}, roundTrips{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < 3; ++round) {
        for (CA_ImageFormat format : formats) {
          // A size of its own per thread, so a mix-up shows.
          DibPtr dib = MakeTestDib(20 + t, 10 + t, CA_DibFormat_Rgb24);
          const std::string bytes = EncodeToBytes(dib.get(), format);
          if (bytes.empty()) continue;  // no such codec in this build
          DibPtr back = DecodeBytes(bytes);
          if (!back || back->GetWidth() != 20 + t || back->GetHeight() != 10 + t) ++mismatches;
          ++roundTrips;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_GE(roundTrips.load(), 4 * 3);  // BMP at least is always there
}

}  // namespace
