#include "frame/error_record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace Zelq {
namespace {

TEST(ErrorRecord, RecordsPrefixedMessagesAndClears) {
  ErrorRecord err;
  SetError(err, 0, "nothing %d", 1);
  EXPECT_EQ(err.Code(), 0);
  EXPECT_EQ(err.Message(), nullptr);  // code 0 on a fresh record allocates nothing

  SetError(err, 3, "Invalid col index");
  EXPECT_EQ(err.Code(), 3);
  EXPECT_STREQ(err.Message(), "(INVALID) Invalid col index");
  const char* buffer = err.Message();

  SetError(err, 0, "ignored");
  EXPECT_EQ(err.Code(), 0);
  EXPECT_STREQ(err.Message(), "(INVALID) Invalid col index");  // stale text stays

  SetError(err, 12, "Engine code %d", 12);
  EXPECT_EQ(err.Code(), 12);
  EXPECT_STREQ(err.Message(), "(UNKNOWN) Engine code 12");
  EXPECT_EQ(err.Message(), buffer);  // allocated once

  err.ClearAtEntry();
  EXPECT_EQ(err.Code(), 0);
  EXPECT_STREQ(err.Message(), "");
}

TEST(ErrorRecord, CutsLongMessages) {
  ErrorRecord err;
  std::string long_text(200, 'x');
  SetError(err, 3, "%s", long_text.c_str());
  EXPECT_EQ(std::string(err.Message()), "(INVALID) " + std::string(95, 'x'));

  SetError(err, 8, "%s", long_text.c_str());
  EXPECT_EQ(std::string(err.Message()), "(NONCONVEX) " + std::string(95, 'x'));
  EXPECT_LE(std::strlen(err.Message()), 127u);

  SetErrorText(err, 5, long_text.c_str());  // no prefix, 127 characters at most
  EXPECT_EQ(std::string(err.Message()), std::string(127, 'x'));
}

TEST(ErrorRecord, SetErrorTextPassesRecordsOn) {
  ErrorRecord inner;
  SetError(inner, 3, "Index (%d) is out of bounds for axis %d of dimension %d", 5, 0, 5);
  ErrorRecord outer;
  PassError(outer, inner);
  EXPECT_EQ(outer.Code(), 3);
  EXPECT_STREQ(outer.Message(), "(INVALID) Index (5) is out of bounds for axis 0 of dimension 5");

  SetErrorText(outer, 7, nullptr);  // a null text changes only the code
  EXPECT_EQ(outer.Code(), 7);
  EXPECT_STREQ(outer.Message(), inner.Message());

  ErrorRecord fresh;
  SetErrorText(fresh, 0, nullptr);
  EXPECT_EQ(fresh.Message(), nullptr);
  SetErrorText(fresh, 0, "not kept");
  EXPECT_EQ(fresh.Message(), nullptr);
}

TEST(ErrorRecord, NamesEveryCode) {
  const std::pair<int, const char*> names[] = {{0, "OK"},       {1, "MEMORY"},   {2, "FILE"},
                                               {3, "INVALID"},  {4, "UNKNOWN"},  {5, "INTERNAL"},
                                               {6, "THREAD"},   {7, "SERVER"},   {8, "NONCONVEX"},
                                               {-1, "UNKNOWN"}, {9, "UNKNOWN"}};
  for (const auto& [code, name] : names) EXPECT_STREQ(ErrorCodeName(code), name) << code;
}

TEST(ErrorRecord, CopiesAndMovesOwnTheirText) {
  ErrorRecord a;
  SetError(a, 3, "first");
  ErrorRecord b = a;
  SetError(a, 3, "second");
  EXPECT_STREQ(b.Message(), "(INVALID) first");
  ErrorRecord c = std::move(a);
  EXPECT_STREQ(c.Message(), "(INVALID) second");
  EXPECT_EQ(a.Message(), nullptr);  // NOLINT(bugprone-use-after-move): moved-from is empty
  EXPECT_EQ(a.Code(), 0);
  b = c;
  EXPECT_STREQ(b.Message(), "(INVALID) second");
  b = b;  // self-assignment keeps the text
  EXPECT_STREQ(b.Message(), "(INVALID) second");
}

}  // namespace
}  // namespace Zelq
