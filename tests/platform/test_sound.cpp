#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/sound.h"
#include "support/testfiles.h"

namespace veldra::testing {
namespace {

TEST(Sound, TheFirstPlayerThatIsThereGetsTheFile) {
  const CTempFolder folder;
  const CVariable path("PATH", folder.Path());
  CSoundPlayer player;
  SError error;
  EXPECT_NE(CSoundPlayer::WhyNot(), "");
  EXPECT_FALSE(player.Play("x.wav", &error));
  EXPECT_EQ(error.what, CSoundPlayer::WhyNot());

  folder.Write("pw-play", "cannot be run");
  const std::string heard = folder.File("heard");
  const std::string program = folder.Write("aplay", "#!/bin/sh\nprintf %s \"$1\" > '" + heard + "x'\n/bin/mv '" +
                                                        heard + "x' '" + heard + "'\nexec /bin/sleep 600\n");
  ASSERT_EQ(chmod(program.c_str(), 0700), 0);
  EXPECT_EQ(CSoundPlayer::WhyNot(), "");
  const std::string sound = folder.Write("-r engine.wav", "RIFF");
  ASSERT_TRUE(player.Play(sound, &error)) << error.what;
  while (!IsFile(heard))
    usleep(1000);
  EXPECT_EQ(ReadTestFile(heard), sound);
  player.Stop();  // would hang until the program has ended by itself
}

}  // namespace
}  // namespace veldra::testing
