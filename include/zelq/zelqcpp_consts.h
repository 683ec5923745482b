// Constants of the header layer: infinity, objective senses, variable types
// and constraint senses, as the library and the engine take them.
#ifndef ZELQ_ZELQCPP_CONSTS_H_
#define ZELQ_ZELQCPP_CONSTS_H_

namespace Zelq {

// Bounds at or beyond +/-kInfinity are unbounded.
inline constexpr double kInfinity = 1e30;

inline constexpr int kMinimize = 1;
inline constexpr int kMaximize = -1;

inline constexpr char kContinuous = 'C';
inline constexpr char kBinary = 'B';
inline constexpr char kInteger = 'I';

inline constexpr char kLessEqual = 'L';
inline constexpr char kGreaterEqual = 'G';
inline constexpr char kEqual = 'E';
// The sense a two-sided constraint (lower <= expr <= upper) reports.
inline constexpr char kRange = 'R';

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_CONSTS_H_
