#include "frame/shared_block.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

namespace Zelq {
namespace {

struct Counted {
  static int destroyed;
  ~Counted() { ++destroyed; }
};
int Counted::destroyed = 0;

TEST(SharedBlock, CountsReferencesAndReleasesOnce) {
  Counted::destroyed = 0;
  {
    Shared<Counted> a = Shared<Counted>::Wrap(new Counted);
    EXPECT_EQ(a.References(), 1u);
    EXPECT_EQ(a.Count(), 1u);
    EXPECT_EQ(a.ArrayFlag(), 0u);
    Shared<Counted> b = a;
    EXPECT_EQ(a.References(), 2u);
    b = a;  // same block: unchanged
    Shared<Counted>& self = b;
    b = self;
    EXPECT_EQ(a.References(), 2u);
    Shared<Counted> c = std::move(b);
    EXPECT_EQ(b.Get(), nullptr);
    EXPECT_EQ(c.References(), 2u);
  }
  EXPECT_EQ(Counted::destroyed, 1);
}

TEST(SharedBlock, ReleasesArraysSinglesAndNothing) {
  Counted::destroyed = 0;
  { Shared<Counted>::Make(new Counted[3], 3, 0); }
  EXPECT_EQ(Counted::destroyed, 3);  // a run of three, freed as an array

  Counted::destroyed = 0;
  { Shared<Counted>::Make(new Counted[1], 1, 1); }  // count 1, array flag set
  EXPECT_EQ(Counted::destroyed, 1);

  Counted::destroyed = 0;
  {
    Counted outside;
    { Shared<Counted>::Make(&outside, 0, 0); }  // count 0 owns nothing
    EXPECT_EQ(Counted::destroyed, 0);
  }
  EXPECT_EQ(Counted::destroyed, 1);  // only `outside` itself
}

TEST(SharedBlock, AssignmentReleasesTheOldBlock) {
  Counted::destroyed = 0;
  Shared<Counted> a = Shared<Counted>::Wrap(new Counted);
  Shared<Counted> b = Shared<Counted>::Wrap(new Counted);
  a = b;
  EXPECT_EQ(Counted::destroyed, 1);
  EXPECT_EQ(b.References(), 2u);
}

TEST(SharedBlock, CountsAtomicallyAcrossThreads) {
  Shared<int> shared = Shared<int>::Wrap(new int(7));
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&shared] {
      for (int k = 0; k < 20000; ++k) {
        Shared<int> copy = shared;
        ASSERT_EQ(*copy, 7);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(shared.References(), 1u);
}

}  // namespace
}  // namespace Zelq

namespace Zelq {
namespace {

struct Throws {
  explicit Throws(bool fail) {
    if (fail) throw std::runtime_error("no");
  }
};

TEST(SharedBlock, OneAllocationBlocksBehaveLikeWrappedOnes) {
  Counted::destroyed = 0;
  {
    auto a = Shared<Counted>::New();
    EXPECT_EQ(a.Count(), 1u);
    EXPECT_EQ(a.ArrayFlag(), 0u);
    EXPECT_EQ(a.References(), 1u);
    auto b = a;
    EXPECT_EQ(b.References(), 2u);
    EXPECT_EQ(a.Get(), b.Get());
  }
  EXPECT_EQ(Counted::destroyed, 1);
  // A constructor that throws leaks nothing (checked under the leak checker).
  EXPECT_THROW(Shared<Throws>::New(true), std::runtime_error);
  EXPECT_NE(Shared<Throws>::New(false).Get(), nullptr);
}

}  // namespace
}  // namespace Zelq
