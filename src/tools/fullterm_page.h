#pragma once

#include <string>
#include <string_view>

/// Where the full-screen terminal draws.
class PageSurface {
 public:
  enum class Ink { typed, received };

  PageSurface() = default;
  PageSurface(const PageSurface&) = delete;
  PageSurface& operator=(const PageSurface&) = delete;
  virtual ~PageSurface() = default;
  /// Continues the line with bytes of the terminals' code page.
  virtual void draw(std::string_view item, Ink ink) = 0;
  virtual void end_line() = 0;
  virtual void clear() = 0;
};

/// The page of the full-screen terminal: it ends its lines by itself, clears itself after 30 of them, and
/// keeps all that was drawn for printing.
class FullTermPage {
 public:
  explicit FullTermPage(PageSurface& surface) : surface_(surface) {}

  /// Draws one item, a character or a "^" code. No item is broken, so that a line may be 80 long.
  void draw(std::string_view item, PageSurface::Ink ink);
  /// Marks where a block of received characters begins or ends in what was captured.
  void mark();
  /// Empties the page and what was captured.
  void clear();

  /// Everything drawn since clear(), in order, received blocks between pairs of 0xFF. The page clearing
  /// itself takes nothing away. A received pair of 0xFF cannot be told from a mark: that is meant.
  [[nodiscard]] const std::string& captured() const { return captured_; }

 private:
  void checkline();

  PageSurface& surface_;
  std::string captured_;
  int column_ = 0;
  int line_ = 1;
};
