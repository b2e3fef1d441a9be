export default {
  extends: ["stylelint-config-standard"],
  rules: {
    "declaration-no-important": [true, { severity: "warning" }],
    "max-nesting-depth": 2,
    "no-descending-specificity": null,
    "unit-disallowed-list": ["vmax"],
    "function-url-scheme-disallowed-list": ["http", "https"],
  },
};
