// Interfaces of the environment, its configuration and the message sink.
//
// Slot order is the library's binary interface. Operations never throw: a
// failure is kept in the object's error record (GetErrorCode/GetErrorMessage,
// always the last two operations).
#ifndef ZELQ_ZELQCPP_ENVR_IFACE_H_
#define ZELQ_ZELQCPP_ENVR_IFACE_H_

#include "zelq/zelqcpp_fwd.h"

namespace Zelq {

// Receives text the library would otherwise print (the engine banner).
class ILogCallback {
 public:
  virtual ~ILogCallback() = default;
  virtual void DisplayMessage(const char* message) = 0;
};

class IEnvr {
 public:
  virtual ~IEnvr() = default;
  // A new model sharing this environment; name may be null or empty.
  virtual IModel* CreateModel(const char* name) = 0;
  // Closes the engine environment; returns the engine's code unrecorded.
  virtual int Close() = 0;
  virtual int GetCpuAffinity(int cpuStart, int cpuCount) = 0;
  virtual void SetCpuAffinity(int cpuStart, int cpuCount, int mode) = 0;
  virtual void BindNumaCpu(int node, int flags) = 0;
  virtual void BindNumaMem(int node, int flags) = 0;
  virtual int GetNumaNodeCount() = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

class IEnvrConfig {
 public:
  virtual ~IEnvrConfig() = default;
  virtual void Set(const char* name, const char* value) = 0;
  virtual int GetErrorCode() const = 0;
  virtual const char* GetErrorMessage() const = 0;
};

// A byte buffer that receives text written by the model (an MPS problem).
class IProbBuffer {
 public:
  virtual ~IProbBuffer() = default;
  // Size bytes of data followed by one zero byte.
  virtual char* GetData() = 0;
  virtual int GetSize() const = 0;
  // New size; the bytes after the old end, and the terminator, are zero.
  virtual void Resize(int size) = 0;
};

}  // namespace Zelq

#endif  // ZELQ_ZELQCPP_ENVR_IFACE_H_
