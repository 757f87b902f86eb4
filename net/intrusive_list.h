#pragma once

// A list of objects that contain their own links, so that joining and leaving neither allocate nor
// fail, and destroying an object removes it from its list. It owns nothing. An object can be in one
// list per `Tag` at a time.

namespace net {

template <class Tag>
class ListHook {
 public:
  ListHook() = default;
  ~ListHook() { Unlink(); }
  ListHook(const ListHook&) = delete;
  ListHook& operator=(const ListHook&) = delete;

  bool IsLinked() const { return next_ != nullptr; }

  void Unlink() {
    if (!IsLinked()) return;
    next_->previous_ = previous_;
    previous_->next_ = next_;
    next_ = previous_ = nullptr;
  }

 private:
  template <class, class>
  friend class IntrusiveList;

  void LinkBefore(ListHook& other) {
    next_ = &other;
    previous_ = other.previous_;
    previous_->next_ = this;
    other.previous_ = this;
  }

  ListHook* next_ = nullptr;
  ListHook* previous_ = nullptr;
};

template <class T, class Tag>
class IntrusiveList {
 public:
  IntrusiveList() { end_.next_ = end_.previous_ = &end_; }
  ~IntrusiveList() {
    while (PopFront() != nullptr) {
    }
  }
  IntrusiveList(const IntrusiveList&) = delete;
  IntrusiveList& operator=(const IntrusiveList&) = delete;

  bool IsEmpty() const { return end_.next_ == &end_; }

  /// Removes `item` from the list that it was in.
  void PushBack(T& item) {
    Hook& hook = item;
    hook.Unlink();
    hook.LinkBefore(end_);
  }

  /// Removes and returns the first item; null if there is none.
  T* PopFront() {
    if (IsEmpty()) return nullptr;
    Hook* hook = end_.next_;
    hook->Unlink();
    return static_cast<T*>(hook);
  }

  /// Moves all items of `other` to the end of this list.
  void TakeAll(IntrusiveList& other) {
    while (T* item = other.PopFront()) PushBack(*item);
  }

 private:
  using Hook = ListHook<Tag>;
  Hook end_;
};

}  // namespace net
