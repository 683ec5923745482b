// Shared storage: a reference-counted block owning one core or a run of them.
//
// A block holds (pointer, count, array flag, reference count). Handles copy
// the block pointer and count references atomically; the last release frees
// what the block owns:
//   count 0                      -> the block alone (the pointee is not owned);
//   count != 1 or array flag set -> the elements, released as an array;
//   otherwise                    -> the single element.
// Only the reference count is atomic; nothing else in a block is locked.
//
//   auto core = Shared<Core>::Wrap(new Core);   // (core, 1, 0, 1)
//   Shared<Core> copy = core;                    // reference count 2
#ifndef ZELQ_FRAME_SHARED_BLOCK_H_
#define ZELQ_FRAME_SHARED_BLOCK_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace Zelq {

template <class T>
struct SharedBlock {
  T* pointer;
  uint64_t count;
  uint32_t array_flag;
  std::atomic<uint32_t> references;
};

template <class T>
class Shared {
 public:
  Shared() = default;
  ~Shared() { Release(); }
  Shared(const Shared& other) noexcept : block_(other.block_) { Acquire(); }
  Shared(Shared&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  Shared& operator=(const Shared& other) noexcept {
    if (block_ != other.block_) {
      Release();
      block_ = other.block_;
      Acquire();
    }
    return *this;
  }
  Shared& operator=(Shared&& other) noexcept {
    if (this != &other) {
      Release();
      block_ = std::exchange(other.block_, nullptr);
    }
    return *this;
  }

  // A new block (core, 1, 0, 1). If the block cannot be allocated the core is
  // destroyed and the failure propagates.
  static Shared Wrap(T* core) { return Make(core, 1, 0); }

  // A block over `pointer` with the given element count and array flag;
  // count 0 never frees the pointee (external data).
  static Shared Make(T* pointer, uint64_t count, uint32_t array_flag) {
    Shared handle;
    try {
      handle.block_ = new SharedBlock<T>{pointer, count, array_flag, {1}};
    } catch (...) {
      Free(pointer, count, array_flag);
      throw;
    }
    return handle;
  }

  // A new block (core, 1, 0, 1) whose core is built in the same allocation
  // as the block: one allocation instead of two for the many small cores
  // (element records, handle values) made per model element.
  template <class... Args>
  static Shared New(Args&&... args) {
    auto* combined = new Combined;
    try {
      ::new (static_cast<void*>(combined->storage)) T(std::forward<Args>(args)...);
    } catch (...) {
      delete combined;
      throw;
    }
    combined->block.pointer = reinterpret_cast<T*>(combined->storage);
    Shared handle;
    handle.block_ = &combined->block;
    return handle;
  }

  T* Get() const { return block_ != nullptr ? block_->pointer : nullptr; }
  T* operator->() const { return block_->pointer; }
  T& operator*() const { return *block_->pointer; }
  explicit operator bool() const { return Get() != nullptr; }
  uint64_t Count() const { return block_ != nullptr ? block_->count : 0; }
  uint32_t ArrayFlag() const { return block_ != nullptr ? block_->array_flag : 0; }
  uint32_t References() const { return block_ != nullptr ? block_->references.load() : 0; }

 private:
  static void Free(T* pointer, uint64_t count, uint32_t array_flag) {
    if (count == 0) return;
    if (count != 1 || array_flag != 0) {
      delete[] pointer;
    } else {
      delete pointer;
    }
  }

  void Acquire() noexcept {
    if (block_ != nullptr) block_->references.fetch_add(1);
  }

  // Block and core in one allocation (made by New). The block comes first,
  // so a pointer to it is a pointer to the whole.
  struct Combined {
    SharedBlock<T> block{nullptr, 1, 0, {1}};
    alignas(T) unsigned char storage[sizeof(T)];
  };

  static bool IsCombined(const SharedBlock<T>* block) {
    return reinterpret_cast<uintptr_t>(block->pointer) ==
           reinterpret_cast<uintptr_t>(block) + offsetof(Combined, storage);
  }

  void Release() noexcept {
    if (block_ == nullptr) return;
    SharedBlock<T>* block = std::exchange(block_, nullptr);
    if (block->references.fetch_sub(1) != 1) return;
    if (IsCombined(block)) {
      block->pointer->~T();
      delete reinterpret_cast<Combined*>(block);
      return;
    }
    Free(block->pointer, block->count, block->array_flag);
    delete block;
  }

  SharedBlock<T>* block_ = nullptr;
};

}  // namespace Zelq

#endif  // ZELQ_FRAME_SHARED_BLOCK_H_
