// Two threads querying one path and one prepared path at once must get the
// answers a single thread gets: neither keeps state between queries.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <vxutility/HitTest.h>

namespace {

CCA_Path Flower() {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.QuadTo(20, 40, 40, 0);
  path.CubicBezierTo(50, -20, 20, -30, 10, -10);
  path.ArcTo(12, 8, 0.3f, 0, 1, 0, 0);
  path.Close();
  return path;
}

std::vector<char> Answers(const CCA_Path& path, const VXHitTestPath& prepared) {
  std::vector<char> answers;
  for (int y = -35; y <= 45; y += 2) {
    for (int x = -15; x <= 55; x += 2) {
      const CCA_GPoint p{static_cast<float>(x), static_cast<float>(y)};
      for (bool fill : {false, true}) {
        answers.push_back(JudgePointOnPath(p, 1.5f, path, 0, fill, CA_FillMode_Winding));
        answers.push_back(prepared.JudgePoint(p, 1.5f, fill));
      }
    }
  }
  return answers;
}

TEST(JudgePointOnPath, TwoThreadsAtOnce) {
  const CCA_Path path = Flower();
  const VXHitTestPath prepared(path);
  const std::vector<char> expected = Answers(path, prepared);
  std::vector<char> first, second;
  std::thread a([&] { first = Answers(path, prepared); });
  std::thread b([&] { second = Answers(path, prepared); });
  a.join();
  b.join();
  EXPECT_EQ(first, expected);
  EXPECT_EQ(second, expected);
}

}  // namespace
