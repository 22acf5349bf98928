import java.nio.charset.StandardCharsets;
import java.security.KeyStore;
import java.security.MessageDigest;
import java.security.PrivateKey;
import java.security.Provider;
import java.security.Security;
import java.security.Signature;
import java.security.cert.X509Certificate;
import java.util.Collections;
import java.util.HexFormat;
import java.util.TreeSet;

/** A client: uses the library that a configuration of SunPKCS11 names, and prints what it is told. */
public class SunPkcs11Client {
    public static void main(String[] arguments) throws Exception {
        Provider provider = Security.getProvider("SunPKCS11").configure(arguments[0]);
        Security.addProvider(provider);
        byte[] note = "Pay the bearer on demand.".getBytes(StandardCharsets.UTF_8);

        KeyStore store = KeyStore.getInstance("PKCS11", provider);
        try {
            store.load(null, arguments[2].toCharArray());
        } catch (java.io.IOException refused) {
            System.out.println(refused.getCause());
        }
        char[] pin = arguments[1].toCharArray();
        store.load(null, pin);
        for (String alias : new TreeSet<>(Collections.list(store.aliases()))) {
            X509Certificate certificate = (X509Certificate) store.getCertificate(alias);
            PrivateKey key = (PrivateKey) store.getKey(alias, pin);
            System.out.println(alias + " " + certificate.getSubjectX500Principal() + " " + key.getAlgorithm());
            boolean rsa = key.getAlgorithm().equals("RSA");

            Signature signature = Signature.getInstance(rsa ? "SHA256withRSA" : "SHA256withECDSA", provider);
            signature.initSign(key);
            signature.update(note);
            byte[] signed = signature.sign();
            if (rsa) System.out.println(HexFormat.of().formatHex(signed));

            Signature check = Signature.getInstance(signature.getAlgorithm());
            check.initVerify(certificate);
            check.update(note);
            System.out.println("verified: " + check.verify(signed));
        }
        MessageDigest digest = MessageDigest.getInstance("SHA-256", provider);
        System.out.println(HexFormat.of().formatHex(digest.digest(note)));
    }
}
