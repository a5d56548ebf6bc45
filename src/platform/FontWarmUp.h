#pragma once

#include <thread>

namespace quarle::platform {

// Reads the system's font configuration on a thread of its own while the
// application connects to the display, so that the first window's labels
// find it read. On systems without fontconfig it does nothing.
//
//   FontWarmUp fonts;            // before the QApplication
//   QApplication app(argc, argv);
//   fonts.Wait();                // before the first widget
class FontWarmUp {
public:
    FontWarmUp();
    ~FontWarmUp();
    FontWarmUp(const FontWarmUp&) = delete;
    FontWarmUp& operator=(const FontWarmUp&) = delete;

    // Returns once the configuration is read. The reading must not run on
    // when Qt reads it too: the two would each read it whole.
    void Wait();

private:
    std::thread reader_;
};

} // namespace quarle::platform
