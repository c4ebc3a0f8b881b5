#include "comparison.h"

int main(int argc, char** argv) {
  veldra::bench::AddTextureComparisons();
  veldra::bench::AddModelComparisons();
  veldra::bench::AddMappingComparisons();
  veldra::bench::AddInterchangeComparisons();
  veldra::bench::AddRendererComparisons();
  veldra::bench::AddArchiveComparisons();
  veldra::bench::RunComparisons(argc, argv);
  return 0;
}
