// ThrowEngineError: the one place the library throws.
//
// Used where a failure cannot be recorded on an object: the engine-side
// search of a parameter or attribute name that the library's table lacks.
#ifndef ZELQ_FRAME_ENGINE_ERROR_H_
#define ZELQ_FRAME_ENGINE_ERROR_H_

namespace Zelq {

// Does nothing for 0; otherwise throws Zelq::Exception with the engine's
// text for `code` (at most 1,019 characters) and `code` itself.
void ThrowEngineError(int code);

}  // namespace Zelq

#endif  // ZELQ_FRAME_ENGINE_ERROR_H_
