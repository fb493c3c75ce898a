#pragma once

/**
 * @brief The viewer's window mode:
 *   kestrix-viewer [FILE...]                                  opens the window with the files
 *   kestrix-viewer FILE... --screenshot OUT.png [--size WxH]  renders the first frame off-screen and exits
 */
class ViewerApplication
{
public:
  /** @brief Makes the QApplication and runs; returns the process exit code. */
  static int run(int argc, char** argv);
};
