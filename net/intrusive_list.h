#pragma once

// A list of objects that bring their own links, so that joining and leaving neither allocate nor
// fail, and an object leaves whatever list it is in when it dies. `Tag` tells the lists apart that
// one object can be in at a time.

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

  /// `item` leaves the list that it was in.
  void PushBack(T& item) {
    Hook& hook = item;
    hook.Unlink();
    hook.LinkBefore(end_);
  }

  /// The first item, taken out, or null.
  T* PopFront() {
    if (IsEmpty()) return nullptr;
    Hook* hook = end_.next_;
    hook->Unlink();
    return static_cast<T*>(hook);
  }

  /// Moves all items of `other` behind the ones here.
  void TakeAll(IntrusiveList& other) {
    while (T* item = other.PopFront()) PushBack(*item);
  }

 private:
  using Hook = ListHook<Tag>;
  Hook end_;
};

}  // namespace net
