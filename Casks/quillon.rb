# Homebrew cask for the released disk image: brew install --cask ./Casks/quillon.rb
cask "quillon" do
  version "0.1.0"
  sha256 :no_check

  url "https://github.com/quillon-app/quillon/releases/download/v#{version}/Quillon-#{version}.dmg"
  name "Quillon"
  desc "Bilan matériel des Mac d’occasion pour les ateliers de réparation"
  homepage "https://quillon.app"

  depends_on macos: ">= :monterey"

  app "Quillon.app"
  binary "#{appdir}/Quillon.app/Contents/MacOS/quillon-bilan"
end
