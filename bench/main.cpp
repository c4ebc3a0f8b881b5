#include "comparison.h"

int main(int argc, char** argv) {
  veldra::bench::AddTextureComparisons();
  veldra::bench::AddModelComparisons();
  veldra::bench::AddRendererComparisons();
  veldra::bench::RunComparisons(argc, argv);
  return 0;
}
